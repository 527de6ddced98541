#include "AtomicFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
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
    // A limit on the size of files stands in for the disk's end.
    struct rlimit former {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &former), 0);
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = former;
    small.rlim_cur = 100000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string error = errorOf([&] { writeFileAtomically(path, bytesOf(std::string(200000, 'x'))); });
    ::setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, formerHandler);
    EXPECT_EQ(error, path.string() + ": cannot be written: File too large");
    EXPECT_EQ(contentsOf(path), "old");
    EXPECT_EQ(entries(), 1);
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
