#include "AtomicFile.h"

#include <tests/support/FileSizeLimit.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <pthread.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/time.h>
#include <thread>
#include <unistd.h>

namespace TOLVGraphing {
namespace {

std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text.data(), text.size()));
}

std::string contentsOf(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

template <typename Action>
std::string errorOf(Action action)
{
    try {
        action();
        return "no error";
    } catch (const FileError& error) {
        return error.what();
    }
}

class AtomicFileTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::string name = (std::filesystem::temp_directory_path() / "atomic-test-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
        path = folder / "file.txt";
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    [[nodiscard]] int entries() const { return static_cast<int>(std::distance(std::filesystem::directory_iterator(folder), {})); }
    void put(const std::filesystem::path& where, std::string_view text) const { std::ofstream(where, std::ios::binary) << text; }

    std::filesystem::path folder;
    std::filesystem::path path;
};

TEST_F(AtomicFileTest, TheFileAppearsWithTheCommit)
{
    AtomicFile file(path);
    file.write(bytesOf("one "));
    file.write(bytesOf(""));
    file.write(bytesOf("two"));
    EXPECT_FALSE(std::filesystem::exists(path));
    file.commit();
    EXPECT_EQ(contentsOf(path), "one two");
    EXPECT_EQ(entries(), 1);
    EXPECT_EQ(file.path(), path);
}

TEST_F(AtomicFileTest, AnOldFileStaysUntilTheCommit)
{
    put(path, "old");
    {
        AtomicFile file(path);
        file.write(bytesOf("new"));
        EXPECT_EQ(contentsOf(path), "old");
    }
    EXPECT_EQ(contentsOf(path), "old");
    EXPECT_EQ(entries(), 1);
    writeFileAtomically(path, bytesOf("new"));
    EXPECT_EQ(contentsOf(path), "new");
    EXPECT_EQ(entries(), 1);
}

TEST_F(AtomicFileTest, LargeAndSmallPiecesKeepTheirOrder)
{
    std::string all;
    AtomicFile file(path);
    for (std::size_t size : {std::size_t{1}, std::size_t{65535}, std::size_t{65536}, std::size_t{3}, std::size_t{200000}, std::size_t{65533}, std::size_t{5}, std::size_t{0}}) {
        const std::string piece(size, static_cast<char>('a' + size % 26));
        file.write(bytesOf(piece));
        all += piece;
    }
    file.commit();
    EXPECT_EQ(contentsOf(path), all);
}

TEST_F(AtomicFileTest, AnEmptyFileIsAFile)
{
    AtomicFile(path).commit();
    EXPECT_TRUE(std::filesystem::is_regular_file(path));
    EXPECT_EQ(std::filesystem::file_size(path), 0U);
}

TEST_F(AtomicFileTest, NothingFollowsTheCommit)
{
    AtomicFile file(path);
    file.commit();
    EXPECT_EQ(errorOf([&] { file.write(bytesOf("x")); }), path.string() + ": cannot be written, it has been finished");
    EXPECT_EQ(errorOf([&] { file.commit(); }), path.string() + ": cannot be written, it has been finished");
}

TEST_F(AtomicFileTest, PermissionsAreKeptOrComeFromTheMask)
{
    const auto modeOf = [](const std::filesystem::path& one) {
        struct stat status {};
        EXPECT_EQ(::stat(one.c_str(), &status), 0);
        return status.st_mode & 0777U;
    };
    const mode_t former = ::umask(027);
    writeFileAtomically(path, bytesOf("new"));
    ::umask(former);
    EXPECT_EQ(modeOf(path), 0640U);
    ASSERT_EQ(::chmod(path.c_str(), 0606), 0);
    writeFileAtomically(path, bytesOf("newer"));
    EXPECT_EQ(modeOf(path), 0606U);
}

TEST_F(AtomicFileTest, SymbolicLinksStay)
{
    std::filesystem::create_directory(folder / "elsewhere");
    put(folder / "elsewhere" / "target.txt", "old");
    std::filesystem::create_symlink("elsewhere/target.txt", folder / "link");
    std::filesystem::create_symlink("link", path);
    writeFileAtomically(path, bytesOf("new"));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(contentsOf(folder / "elsewhere" / "target.txt"), "new");
    EXPECT_EQ(entries(), 3);
    // A link to a file that is not there yet makes that file.
    std::filesystem::create_symlink("fresh.txt", folder / "dangling");
    writeFileAtomically(folder / "dangling", bytesOf("fresh"));
    EXPECT_EQ(contentsOf(folder / "fresh.txt"), "fresh");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "dangling"));
    // A circle of links ends.
    std::filesystem::create_symlink("b", folder / "a");
    std::filesystem::create_symlink("a", folder / "b");
    EXPECT_EQ(errorOf([&] { AtomicFile file(folder / "a"); }), (folder / "a").string() + ": cannot be written: Too many levels of symbolic links");
}

TEST_F(AtomicFileTest, ErrorsNameThePathAndTheReason)
{
    const auto missing = folder / "no" / "such" / "file";
    EXPECT_EQ(errorOf([&] { AtomicFile file(missing); }),
        missing.string() + ": cannot be written, no file can be made in the folder " + (folder / "no" / "such").string() + ": No such file or directory");
    EXPECT_EQ(errorOf([&] { AtomicFile file(folder); }), folder.string() + ": cannot be written: Is a directory");
    EXPECT_EQ(errorOf([&] { AtomicFile file(folder / "new" / ""); }), (folder / "new" / "").string() + ": cannot be written: Is a directory");
    EXPECT_EQ(errorOf([&] { AtomicFile file(""); }), ": cannot be written: No such file or directory");
    put(path, "file");
    EXPECT_EQ(errorOf([&] { AtomicFile file(path / "below"); }).find(path.string()), 0U);
    EXPECT_EQ(entries(), 1);
}

TEST_F(AtomicFileTest, AFileWithoutPermissionIsNotReplaced)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "a privileged user may write every file";
    put(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(errorOf([&] { AtomicFile file(path); }), path.string() + ": cannot be written: Permission denied");
    EXPECT_EQ(contentsOf(path), "old");
}

TEST_F(AtomicFileTest, AFullDiskLeavesTheOldFile)
{
    put(path, "old");
    {
        const testing_support::FileSizeLimit limit(100000);
        EXPECT_EQ(errorOf([&] { writeFileAtomically(path, bytesOf(std::string(200000, 'x'))); }), path.string() + ": cannot be written: File too large");
    }
    EXPECT_EQ(contentsOf(path), "old");
    EXPECT_EQ(entries(), 1);
}

TEST_F(AtomicFileTest, TargetsThatTakeNothingAreNamedAndNothingIsLeft)
{
    put(path, "old");
    std::filesystem::create_symlink("nowhere/target", folder / "dangling");
    const struct {
        std::filesystem::path target;
        const char* reason;
    } kCases[] = {
        // clang-format off
        {path / "below",                 ": cannot be written: Not a directory"},
        {folder / std::string(300, 'n'), ": cannot be written: File name too long"},
        {std::string(5000, 'n'),         ": cannot be written: File name too long"},
        {folder / "dangling",            ": cannot be written, no file can be made in the folder "},
        {"/dev/full",                    ": cannot be written: No space left on device"},
        {"/proc/self/fd/987654",         ": cannot be written: Bad file descriptor"},
        // clang-format on
    };
    for (const auto& one : kCases)
        EXPECT_EQ(errorOf([&] { writeFileAtomically(one.target, bytesOf("new")); }).find(one.target.string() + one.reason), 0U) << one.target;
    EXPECT_EQ(contentsOf(path), "old");
    EXPECT_EQ(entries(), 2);
}

/// Interrupts the system's calls again and again, for the life of the object.
class Interruptions {
public:
    Interruptions()
    {
        count = 0;
        struct sigaction action {};
        action.sa_handler = [](int) { ++count; };
        ::sigaction(SIGALRM, &action, &m_former);
        const itimerval often{{0, 500}, {0, 500}};
        ::setitimer(ITIMER_REAL, &often, nullptr);
    }
    ~Interruptions()
    {
        const itimerval never{};
        ::setitimer(ITIMER_REAL, &never, nullptr);
        ::sigaction(SIGALRM, &m_former, nullptr);
    }
    Interruptions(const Interruptions&) = delete;
    Interruptions& operator=(const Interruptions&) = delete;

    /// Returns after some further ones.
    static void wait()
    {
        for (const int now = count; count < now + 5;)
            std::this_thread::yield();
    }

    static std::atomic<int> count;

private:
    struct sigaction m_former {};
};

std::atomic<int> Interruptions::count = 0;

/// What a pipe brings that is opened late and emptied slowly. The signals go to other threads.
std::string slowContentsOf(const std::filesystem::path& pipe)
{
    sigset_t alarm;
    sigemptyset(&alarm);
    sigaddset(&alarm, SIGALRM);
    ::pthread_sigmask(SIG_BLOCK, &alarm, nullptr);
    Interruptions::wait();
    std::ifstream stream(pipe, std::ios::binary);
    std::string contents;
    std::string block(50000, ' ');
    do {
        Interruptions::wait();
        stream.read(block.data(), static_cast<std::streamsize>(block.size()));
        contents.append(block, 0, static_cast<std::size_t>(stream.gcount()));
    } while (stream);
    return contents;
}

std::string manyBytes()
{
    std::string bytes(1000000, ' ');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>('a' + i * i % 23);
    return bytes;
}

TEST_F(AtomicFileTest, InterruptedCallsAreMadeAgain)
{
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const Interruptions interruptions;
    std::string received;
    std::thread reader([&] { received = slowContentsOf(path); });
    EXPECT_EQ(errorOf([&] { writeFileAtomically(path, bytesOf(manyBytes())); }), "no error");
    reader.join();
    EXPECT_TRUE(received == manyBytes());
}

TEST_F(AtomicFileTest, APipeThatIsNotToBeWaitedForGetsAll)
{
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const Interruptions interruptions;
    std::string received;
    std::thread reader([&] { received = slowContentsOf(path); });
    int descriptor = -1;
    do {
        descriptor = ::open(path.c_str(), O_WRONLY);
    } while (descriptor < 0 && errno == EINTR);
    ASSERT_EQ(::fcntl(descriptor, F_SETFL, O_NONBLOCK), 0);
    EXPECT_EQ(errorOf([&] { writeFileAtomically("/dev/fd/" + std::to_string(descriptor), bytesOf(manyBytes())); }), "no error");
    ::close(descriptor);
    reader.join();
    EXPECT_TRUE(received == manyBytes());
}

TEST_F(AtomicFileTest, APipeThatNobodyReadsAnyMoreIsAnError)
{
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[0]);
    const auto formerHandler = std::signal(SIGPIPE, SIG_IGN);
    const std::string name = "/dev/fd/" + std::to_string(ends[1]);
    EXPECT_EQ(errorOf([&] { writeFileAtomically(name, bytesOf("gone")); }), name + ": cannot be written: Broken pipe");
    std::signal(SIGPIPE, formerHandler);
    ::close(ends[1]);
}

TEST_F(AtomicFileTest, PipesAreWrittenDirectly)
{
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = contentsOf(path); });
    writeFileAtomically(path, bytesOf(std::string(100000, 'y')));
    reader.join();
    EXPECT_EQ(received, std::string(100000, 'y'));
    EXPECT_EQ(entries(), 1);
    writeFileAtomically("/dev/null", bytesOf("gone"));
}

TEST_F(AtomicFileTest, OpenDescriptorsAreWrittenWhereTheyStand)
{
    put(path, "");
    const int descriptor = ::open(path.c_str(), O_WRONLY);
    ASSERT_GE(descriptor, 0);
    ASSERT_EQ(::write(descriptor, "before ", 7), 7);
    writeFileAtomically("/dev/fd/" + std::to_string(descriptor), bytesOf("between "));
    writeFileAtomically("/proc/self/fd/" + std::to_string(descriptor), bytesOf("again "));
    // The descriptor itself is still open.
    ASSERT_EQ(::write(descriptor, "after", 5), 5);
    ::close(descriptor);
    EXPECT_EQ(contentsOf(path), "before between again after");
    EXPECT_NE(errorOf([] { writeFileAtomically("/proc/self/fd/987654", bytesOf("x")); }), "no error");
}

TEST(FileError, SaysPathAndReason)
{
    const FileError plain("a.png", "has no pixels");
    EXPECT_STREQ(plain.what(), "a.png: has no pixels");
    EXPECT_EQ(plain.path(), "a.png");
    EXPECT_EQ(plain.reason(), "has no pixels");
    EXPECT_STREQ(FileError("b.csv", "cannot be opened", ENOENT).what(), "b.csv: cannot be opened: No such file or directory");
}

} // namespace
} // namespace TOLVGraphing
