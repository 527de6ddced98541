#include <desktop/input/MappedFile.h>

#include <desktop/input/MeasurementError.h>
#include <desktop/input/testing/TemporaryFile.h>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace TOLVGraphing::input {

namespace {

using testing::TemporaryFile;

std::string textOf(const MappedFile& file)
{
    return std::string(reinterpret_cast<const char*>(file.bytes().data()), file.bytes().size());
}

/// What is wrong with the path, behind its name.
std::string errorAtPath(const std::string& path)
{
    try {
        static_cast<void>(MappedFile::fileAtPath(path));
        return "mapped";
    } catch (const MeasurementError& error) {
        const std::string text = error.what();
        return text.starts_with(path) ? text.substr(path.size()) : "the error does not name the file: " + text;
    }
}

TEST(MappedFile, hasTheBytesOfTheFile)
{
    const std::string page(static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)), 'p');
    for (const std::string& content : {std::string("a"), std::string("one\0two", 7), page, page + "q", page + page}) {
        const TemporaryFile file(content);
        const auto mapped = MappedFile::fileAtPath(file.path());
        EXPECT_EQ(textOf(*mapped), content) << content.size();
        EXPECT_EQ(mapped->bytes().data()[content.size()], std::byte{0}) << "behind the end";
        EXPECT_EQ(mapped->identity().size, content.size());
        EXPECT_FALSE(mapped->hasLostPages());
        for (const auto access : {MappedFile::Access::Sequential, MappedFile::Access::Scattered, MappedFile::Access::Usual})
            mapped->expectAccess(access);
        EXPECT_EQ(textOf(*mapped), content) << content.size();
    }
}

TEST(MappedFile, ofAnEmptyFileHasNoBytes)
{
    const TemporaryFile file("");
    const auto mapped = MappedFile::fileAtPath(file.path());
    EXPECT_TRUE(mapped->bytes().empty());
    EXPECT_FALSE(mapped->hasLostPages());
    mapped->expectAccess(MappedFile::Access::Sequential);
}

TEST(MappedFile, refusesWhatIsNoRegularFile)
{
    const TemporaryFile file("");
    const std::string pipe = file.path() + ".pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(errorAtPath(pipe), ": a pipe or device, expected a regular file");
    ::unlink(pipe.c_str());
    EXPECT_EQ(errorAtPath("/dev/null"), ": a pipe or device, expected a regular file");
    EXPECT_EQ(errorAtPath("/"), ": a folder, expected a regular file");
    EXPECT_EQ(errorAtPath("/nowhere/at/all"), ": cannot be opened (No such file or directory), expected a readable file");
    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_EQ(MappedFile::fileOfDescriptor(ends[0]), nullptr);
    ::close(ends[0]);
    ::close(ends[1]);
    EXPECT_EQ(MappedFile::fileOfDescriptor(-1), nullptr);
}

TEST(MappedFile, staysWhenTheFileIsReplacedOrRemoved)
{
    const TemporaryFile file("before");
    const auto mapped = MappedFile::fileAtPath(file.path());
    file.write("behind");
    EXPECT_EQ(textOf(*mapped), "before");
    EXPECT_EQ(textOf(*MappedFile::fileAtPath(file.path())), "behind");
    EXPECT_NE(MappedFile::fileAtPath(file.path())->identity(), mapped->identity());
}

/// How many descriptors the process has open.
std::ptrdiff_t descriptorCount()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(MappedFile, keepsTheFileOpenAsLongAsItLives)
{
    const TemporaryFile file("content");
    const auto before = descriptorCount();
    {
        const auto mapped = MappedFile::fileAtPath(file.path());
        EXPECT_EQ(descriptorCount(), before + 1);
    }
    EXPECT_EQ(descriptorCount(), before);
}

/// What the file misses of its bytes, behind the name that it is given; empty for nothing.
std::string missingIn(const MappedFile& file)
{
    try {
        file.requireAllBytes("NAME");
        return {};
    } catch (const MeasurementError& error) {
        EXPECT_EQ(error.file(), "NAME");
        return error.what();
    }
}

TEST(MappedFile, saysWhenTheFileHasBecomeShorter)
{
    const std::size_t length = 3'000'001;
    for (const std::size_t left : {std::size_t{3'000'000}, std::size_t{2'999'296}, std::size_t{2'998'273}, std::size_t{4096}, std::size_t{1}, std::size_t{0}}) {
        SCOPED_TRACE(left);
        const TemporaryFile file(std::string(length, 'x'));
        const auto mapped = MappedFile::fileAtPath(file.path());
        EXPECT_EQ(missingIn(*mapped), "");
        ASSERT_EQ(::truncate(file.path().c_str(), static_cast<off_t>(left)), 0);
        EXPECT_EQ(missingIn(*mapped), "NAME: became shorter while it was read, " + std::to_string(left) + " bytes are left, expected 3000001")
            << "also where nothing was touched, and where pages are cut in two";
    }
}

TEST(MappedFile, remembersLostBytesOfAFileThatHasGrownAgain)
{
    const TemporaryFile file(std::string(100'000, 'x'));
    const auto mapped = MappedFile::fileAtPath(file.path());
    ASSERT_EQ(::truncate(file.path().c_str(), 0), 0);
    EXPECT_EQ(mapped->bytes()[50'000], std::byte{0});
    ASSERT_EQ(::truncate(file.path().c_str(), 200'000), 0);
    EXPECT_EQ(missingIn(*mapped), "NAME: bytes that were lost while the file was read, expected all 100000 to be readable");
}

TEST(MappedFile, isWholeWhereTheFileGrowsIsReplacedOrIsRemoved)
{
    const TemporaryFile file("content");
    const auto mapped = MappedFile::fileAtPath(file.path());
    ASSERT_EQ(::truncate(file.path().c_str(), 100'000), 0);
    EXPECT_EQ(missingIn(*mapped), "");
    file.write("new");
    EXPECT_EQ(missingIn(*mapped), "");
    ASSERT_EQ(::unlink(file.path().c_str()), 0);
    EXPECT_EQ(missingIn(*mapped), "");
    EXPECT_EQ(missingIn(*MappedFile::fileAtPath(TemporaryFile("").path())), "") << "of an empty file nothing can be missing";
}

TEST(MappedFile, ofACutFileHasZerosBehindTheNewEnd)
{
    const std::size_t length = 3'000'001;
    const TemporaryFile file(std::string(length, 'x'));
    const auto mapped = MappedFile::fileAtPath(file.path());
    const auto other = MappedFile::fileAtPath(file.path());
    ASSERT_EQ(::truncate(file.path().c_str(), 5), 0);
    EXPECT_FALSE(mapped->hasLostPages()) << "nothing was touched";
    std::string expected(length, '\0');
    expected.replace(0, 5, "xxxxx");
    EXPECT_EQ(textOf(*mapped), expected);
    EXPECT_TRUE(mapped->hasLostPages());
    EXPECT_FALSE(other->hasLostPages());
    EXPECT_EQ(other->bytes()[length - 1], std::byte{0});
    EXPECT_TRUE(other->hasLostPages());
}

TEST(MappedFile, ofACutFileIsReadBySeveralThreads)
{
    const std::size_t length = 8'000'000;
    const TemporaryFile file(std::string(length, 'x'));
    const auto mapped = MappedFile::fileAtPath(file.path());
    ASSERT_EQ(::truncate(file.path().c_str(), 0), 0);
    std::vector<std::size_t> sums(4, 1);
    {
        std::vector<std::jthread> threads;
        for (std::size_t& sum : sums) {
            threads.emplace_back([&sum, bytes = mapped->bytes()] {
                sum = 0;
                for (const std::byte byte : bytes)
                    sum += static_cast<std::size_t>(byte);
            });
        }
    }
    EXPECT_EQ(sums, std::vector<std::size_t>(4, 0));
}

TEST(MappedFile, isRefusedWhereTooManyAreMappedAndAgainWhenFewerAre)
{
    const TemporaryFile file("content");
    std::vector<std::shared_ptr<const MappedFile>> files;
    while (files.size() <= 256 && errorAtPath(file.path()) == "mapped")
        files.push_back(MappedFile::fileAtPath(file.path()));
    EXPECT_LE(files.size(), 256U);
    EXPECT_GE(files.size(), 200U);
    EXPECT_EQ(errorAtPath(file.path()), ": cannot be mapped (Too many open files), expected a file that fits the address space");
    files.pop_back();
    EXPECT_EQ(errorAtPath(file.path()), "mapped");
}

TEST(MappedFileDeathTest, leavesOtherLostPagesToWhoeverWantsThem)
{
    // Threads of other tests are gone, but the guard's handler is there.
    EXPECT_EXIT(
        {
            const TemporaryFile file("content");
            const auto mapped = MappedFile::fileAtPath(file.path());
            ::raise(SIGBUS);
            ::_exit(0);
        },
        [](int status) { return (WIFSIGNALED(status) && WTERMSIG(status) == SIGBUS) || (WIFEXITED(status) && WEXITSTATUS(status) != 0); }, "");
}

} // namespace

} // namespace TOLVGraphing::input
