#include <desktop/input/ExtremesFolder.h>

#include <desktop/input/MeasurementReader.h>
#include <desktop/input/testing/FloatFiles.h>
#include <desktop/input/testing/TemporaryFile.h>

#include <TOLVMath/ExtremePyramid.h>
#include <tests/support/FileSizeLimit.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace TOLVGraphing::input {

namespace {

namespace fs = std::filesystem;

using testing::bytesOfFloats;
using testing::noise;
using testing::TemporaryFile;

/// A test with an empty folder of its own that is removed afterwards.
class ExtremesFolderTest : public ::testing::Test {
protected:
    ExtremesFolderTest()
    {
        static int count = 0;
        m_path = fs::temp_directory_path() / ("extremes_" + std::to_string(::getpid()) + "_" + std::to_string(count++));
        fs::create_directory(m_path);
    }
    ~ExtremesFolderTest() override { fs::remove_all(m_path); }

    [[nodiscard]] fs::path path() const { return m_path; }
    /// Takes columns of any length.
    [[nodiscard]] ExtremesFolder folder(std::uint64_t largestSize = ExtremesFolder::kUsualLargestSize) const
    {
        return ExtremesFolder(m_path / "made" / "by itself", 1, largestSize);
    }
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        std::error_code error;
        for (const auto& entry : fs::directory_iterator(m_path / "made" / "by itself", error))
            result.push_back(entry.path().filename().string());
        std::sort(result.begin(), result.end());
        return result;
    }

private:
    fs::path m_path;
};

FileColumn columnOf(const std::vector<float>& samples, std::uint64_t node = 5)
{
    return {{3, node, 4096, 1'700'000'000'123'456'789, 1'700'000'001'000'000'000}, 128, sizeof(float), samples};
}

ColumnExtremes extremesOfSamples(const std::vector<float>& samples, std::size_t gapCount = 0)
{
    return {std::make_shared<const ExtremePyramid>(samples), gapCount};
}

std::string contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void write(const fs::path& path, const std::string& content)
{
    fs::remove(path);
    std::ofstream(path, std::ios::binary) << content;
}

TEST_F(ExtremesFolderTest, answersWhatWasKept)
{
    for (const std::size_t count : {1U, 63U, 64U, 65U, 4095U, 4096U, 4097U, 100'000U}) {
        SCOPED_TRACE(count);
        std::vector<float> samples = noise(count);
        samples[count / 2] = std::numeric_limits<float>::quiet_NaN();
        const ColumnExtremes made = extremesOfSamples(samples, 1);
        folder().keep(columnOf(samples), made);
        const auto kept = folder().extremesOf(columnOf(samples));
        ASSERT_TRUE(kept);
        EXPECT_EQ(kept->gapCount, 1U);
        EXPECT_TRUE(kept->pyramid->hasNaN());
        EXPECT_EQ(kept->pyramid->sampleCount(), count);
        EXPECT_EQ(kept->pyramid->extremes(), made.pyramid->extremes());
        EXPECT_TRUE(std::equal(kept->pyramid->numbers().begin(), kept->pyramid->numbers().end(), made.pyramid->numbers().begin(), made.pyramid->numbers().end()));
    }
    EXPECT_EQ(names().size(), 8U);
}

TEST_F(ExtremesFolderTest, isForItsOwnerOnly)
{
    const std::vector<float> samples = noise(100);
    folder().keep(columnOf(samples), extremesOfSamples(samples));
    for (const fs::path& made : {path() / "made", path() / "made" / "by itself"})
        EXPECT_EQ(fs::status(made).permissions(), fs::perms::owner_all) << made;
    EXPECT_EQ(fs::status(folder().pathFor(columnOf(samples))).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

struct OtherColumn {
    const char* name;
    std::function<void(FileColumn&)> change;
};

TEST_F(ExtremesFolderTest, answersNothingForAnotherFileOrColumn)
{
    const std::vector<float> samples = noise(10'000);
    const std::vector<float> more = noise(10'001);
    const FileColumn column = columnOf(samples);
    folder().keep(column, extremesOfSamples(samples));
    const OtherColumn others[] = {
        {"device", [](FileColumn& c) { ++c.file.device; }},
        {"node", [](FileColumn& c) { ++c.file.node; }},
        {"size", [](FileColumn& c) { ++c.file.size; }},
        {"modified", [](FileColumn& c) { ++c.file.modified; }},
        {"changed", [](FileColumn& c) { --c.file.changed; }},
        {"offset", [](FileColumn& c) { c.offset += 4; }},
        {"stride", [](FileColumn& c) { c.stride += 4; }},
        {"length", [&](FileColumn& c) { c.samples = more; }},
        {"no samples", [](FileColumn& c) { c.samples = {}; }},
    };
    for (const OtherColumn& other : others) {
        FileColumn changed = column;
        other.change(changed);
        EXPECT_FALSE(folder().extremesOf(changed)) << other.name;
        // Not even under its name.
        if (folder().pathFor(changed) == folder().pathFor(column))
            continue;
        fs::copy_file(folder().pathFor(column), folder().pathFor(changed));
        EXPECT_FALSE(folder().extremesOf(changed)) << other.name << ", with the file of the one";
    }
    EXPECT_TRUE(folder().extremesOf(column));
}

TEST_F(ExtremesFolderTest, answersNothingOfADamagedFile)
{
    const std::vector<float> samples = noise(2'000);
    const FileColumn column = columnOf(samples);
    folder().keep(column, extremesOfSamples(samples));
    const fs::path file = folder().pathFor(column);
    const std::string whole = contentOf(file);
    ASSERT_EQ(whole.size(), 128 + (2 + 1) * 32 * sizeof(float)) << "32 blocks in two groups of sixteen, then two entries";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        write(file, whole.substr(0, length));
        EXPECT_FALSE(folder().extremesOf(column)) << length << " bytes";
    }
    write(file, whole + "1234");
    EXPECT_FALSE(folder().extremesOf(column));
    for (std::size_t place = 0; place < whole.size(); ++place) {
        std::string damaged = whole;
        damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
        write(file, damaged);
        EXPECT_FALSE(folder().extremesOf(column)) << place;
    }
    write(file, whole);
    EXPECT_TRUE(folder().extremesOf(column));
}

TEST_F(ExtremesFolderTest, answersNothingWhereAProbedBlockHasOtherExtremes)
{
    // 64 blocks, all of which are looked at; then a thousand blocks, of which every 16th or so is.
    const std::vector<float> samples = noise(64 * 64);
    folder().keep(columnOf(samples), extremesOfSamples(samples));
    for (std::size_t block = 0; block < 64; ++block) {
        for (const float value : {100.0F, -100.0F, std::numeric_limits<float>::quiet_NaN()}) {
            std::vector<float> changed = samples;
            changed[block * 64 + block] = value;
            EXPECT_FALSE(folder().extremesOf(columnOf(changed))) << block << " " << value;
        }
    }
    const std::vector<float> many = noise(64 * 1000 + 1);
    folder().keep(columnOf(many), extremesOfSamples(many));
    EXPECT_TRUE(folder().extremesOf(columnOf(many)));
    for (const std::size_t place : {std::size_t{0}, many.size() - 1}) {
        std::vector<float> changed = many;
        changed[place] = 100.0F;
        EXPECT_FALSE(folder().extremesOf(columnOf(changed))) << place;
    }
    const std::vector<float> other = noise(64 * 1000 + 1, 2);
    EXPECT_FALSE(folder().extremesOf(columnOf(other))) << "of the same name, size and times";
}

TEST_F(ExtremesFolderTest, thatCannotBeUsedIsAnEmptyOne)
{
    const std::vector<float> samples = noise(100);
    write(path() / "file", "no folder");
    for (const fs::path& place : {path() / "file", path() / "file" / "below", fs::path("/proc/nothing"), fs::path("")}) {
        const ExtremesFolder unusable(place, 1);
        unusable.keep(columnOf(samples), extremesOfSamples(samples));
        EXPECT_FALSE(unusable.extremesOf(columnOf(samples))) << place;
    }
    EXPECT_EQ(contentOf(path() / "file"), "no folder");
    // A folder, a pipe and a dead link of the file's name.
    const ExtremesFolder usable(path(), 1);
    const fs::path name = usable.pathFor(columnOf(samples));
    fs::create_directory(name);
    usable.keep(columnOf(samples), extremesOfSamples(samples));
    EXPECT_FALSE(usable.extremesOf(columnOf(samples)));
    fs::remove(name);
    ASSERT_EQ(::mkfifo(name.c_str(), 0600), 0);
    EXPECT_FALSE(usable.extremesOf(columnOf(samples)));
    usable.keep(columnOf(samples), extremesOfSamples(samples));
    EXPECT_TRUE(usable.extremesOf(columnOf(samples))) << "in place of the pipe";
    fs::remove(name);
    fs::create_symlink("nowhere", name);
    EXPECT_FALSE(usable.extremesOf(columnOf(samples)));
    EXPECT_EQ(std::distance(fs::directory_iterator(path()), fs::directory_iterator()), 2) << "nothing unfinished is left";
}

TEST_F(ExtremesFolderTest, thatMayNotBeWrittenIsLeftAlone)
{
    const std::vector<float> samples = noise(100);
    fs::permissions(path(), fs::perms::owner_read | fs::perms::owner_exec);
    if (::access(path().c_str(), W_OK) == 0)
        GTEST_SKIP() << "the superuser may write anywhere";
    folder().keep(columnOf(samples), extremesOfSamples(samples));
    ExtremesFolder(path(), 1).keep(columnOf(samples), extremesOfSamples(samples));
    EXPECT_TRUE(fs::is_empty(path()));
    fs::permissions(path(), fs::perms::owner_all);
}

TEST_F(ExtremesFolderTest, onAFullDiskKeepsWhatItHas)
{
    const std::vector<float> small = noise(100);
    const std::vector<float> large = noise(64 * 1000, 2);
    folder().keep(columnOf(small), extremesOfSamples(small));
    const auto kept = names();
    ASSERT_EQ(kept.size(), 1U);
    {
        const testing_support::FileSizeLimit limit(1000);
        folder().keep(columnOf(large, 6), extremesOfSamples(large));
    }
    EXPECT_EQ(names(), kept) << "nothing unfinished is left";
    EXPECT_TRUE(folder().extremesOf(columnOf(small)));
    EXPECT_FALSE(folder().extremesOf(columnOf(large, 6)));
}

TEST_F(ExtremesFolderTest, dropsTheOldestBeyondItsSize)
{
    const std::vector<float> samples = noise(64);
    const std::uint64_t one = 128 + 32 * sizeof(float);
    const auto now = fs::file_time_type::clock::now();
    for (std::uint64_t node = 1; node <= 4; ++node) {
        folder(3 * one).keep(columnOf(samples, node), extremesOfSamples(samples));
        fs::last_write_time(folder().pathFor(columnOf(samples, node)), now - std::chrono::hours(10 - node));
        // The first was used, not written, last.
        EXPECT_EQ(folder().extremesOf(columnOf(samples, 1)).has_value(), node <= 3) << node;
    }
    EXPECT_EQ(names().size(), 3U);
    folder(one).keep(columnOf(samples, 5), extremesOfSamples(samples));
    EXPECT_EQ(names(), std::vector<std::string>{folder().pathFor(columnOf(samples, 5)).filename().string()});
    folder(one - 1).keep(columnOf(samples, 6), extremesOfSamples(samples));
    EXPECT_FALSE(folder().extremesOf(columnOf(samples, 6))) << "too long for itself";
    EXPECT_TRUE(folder().extremesOf(columnOf(samples, 5)));
}

TEST_F(ExtremesFolderTest, leavesOtherFilesButForOldUnfinishedOnes)
{
    const std::vector<float> samples = noise(64);
    folder().keep(columnOf(samples), extremesOfSamples(samples));
    const fs::path place = folder().path();
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(2);
    for (const char* name : {"notes.txt", "a.extremes.AbCdEf", "b.extremes.AbCdEf"})
        write(place / name, "x");
    for (const char* name : {"notes.txt", "a.extremes.AbCdEf"})
        fs::last_write_time(place / name, old);
    folder(1000).keep(columnOf(samples, 9), extremesOfSamples(samples));
    EXPECT_TRUE(fs::exists(place / "notes.txt"));
    EXPECT_FALSE(fs::exists(place / "a.extremes.AbCdEf"));
    EXPECT_TRUE(fs::exists(place / "b.extremes.AbCdEf")) << "someone may be writing it";
}

TEST_F(ExtremesFolderTest, isSharedByThreadsAndProcesses)
{
    const std::vector<float> samples = noise(20'000);
    const ColumnExtremes made = extremesOfSamples(samples);
    const FileColumn column = columnOf(samples);
    const auto keepAndRead = [&](int times) {
        bool isGood = true;
        for (int i = 0; i < times; ++i) {
            folder().keep(column, made);
            const auto kept = folder().extremesOf(column);
            isGood = isGood && kept && kept->pyramid->extremes() == made.pyramid->extremes();
        }
        return isGood;
    };
    std::vector<pid_t> children;
    for (int i = 0; i < 2; ++i) {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(keepAndRead(50) ? 0 : 1);
        children.push_back(child);
    }
    std::vector<int> results(3, 0);
    {
        std::vector<std::jthread> threads;
        for (int& result : results)
            threads.emplace_back([&result, &keepAndRead] { result = keepAndRead(50) ? 1 : 0; });
    }
    EXPECT_EQ(results, std::vector<int>(3, 1));
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(names(), std::vector<std::string>{folder().pathFor(column).filename().string()}) << "nothing unfinished is left";
}

TEST_F(ExtremesFolderTest, keepsWhatReadingFinds)
{
    std::vector<float> samples = noise(70'000);
    const TemporaryFile file(bytesOfFloats(samples), ".f32");
    ReadSettings settings;
    settings.shortestMappedFile = 1;
    settings.extremesFolder = folder();
    const MeasurementTable first = readMeasurements(file.path(), settings);
    ASSERT_EQ(names().size(), 1U);
    const std::string kept = contentOf(folder().path() / names()[0]);
    const MeasurementTable second = readMeasurements(file.path(), settings);
    EXPECT_EQ(first, second);
    ASSERT_NE(second.columns[0].values.pyramid(), nullptr);
    EXPECT_NE(second.columns[0].values.pyramid()->numbers().data(), first.columns[0].values.pyramid()->numbers().data());
    EXPECT_EQ(second.columns[0].values.pyramid()->extremes(), first.columns[0].values.pyramid()->extremes());
    EXPECT_EQ(contentOf(folder().path() / names()[0]), kept);
    settings.extremesFolder = ExtremesFolder(folder().path(), 70'001);
    EXPECT_EQ(readMeasurements(file.path(), settings).columns[0].values.pyramid(), nullptr) << "too short";
    settings.extremesFolder = std::nullopt;
    EXPECT_EQ(readMeasurements(file.path(), settings).columns[0].values.pyramid(), nullptr) << "switched off";
}

TEST_F(ExtremesFolderTest, doesNotAnswerOfAChangedFileWhoseTimeWasSetBack)
{
    std::vector<float> samples = noise(70'000);
    const TemporaryFile file(bytesOfFloats(samples), ".f32");
    ReadSettings settings;
    settings.shortestMappedFile = 1;
    settings.extremesFolder = folder();
    EXPECT_LT(readMeasurements(file.path(), settings).columns[0].values.pyramid()->extremes().maximum, 100.0F);
    const auto time = fs::last_write_time(file.path());
    {
        std::fstream change(file.path(), std::ios::binary | std::ios::in | std::ios::out);
        const float value = 100.0F;
        change.write(reinterpret_cast<const char*>(&value), sizeof value);
    }
    fs::last_write_time(file.path(), time);
    EXPECT_EQ(readMeasurements(file.path(), settings).columns[0].values.pyramid()->extremes().maximum, 100.0F);
    EXPECT_EQ(names().size(), 1U) << "the new ones replace the old ones";
}

TEST_F(ExtremesFolderTest, keepsEachColumnOfAnArray)
{
    std::vector<float> samples = noise(20'000);
    samples[3] = std::numeric_limits<float>::quiet_NaN();
    const TemporaryFile file(testing::alignedNpyOfFloats(samples, "(10000, 2)", true), ".npy");
    ReadSettings settings;
    settings.shortestMappedFile = 1;
    settings.extremesFolder = folder();
    const MeasurementTable first = readMeasurements(file.path(), settings);
    EXPECT_EQ(names().size(), 2U);
    const MeasurementTable second = readMeasurements(file.path(), settings);
    EXPECT_EQ(first, second);
    EXPECT_EQ(second.columns[0].gapCount, 1U);
    EXPECT_EQ(second.columns[1].gapCount, 0U);
}

TEST_F(ExtremesFolderTest, keepsNothingOfAFileThatChangesWhileItIsRead)
{
    std::vector<float> samples = noise(2'000'000);
    const TemporaryFile file(bytesOfFloats(samples), ".f32");
    ReadSettings settings;
    settings.extremesFolder = folder();
    settings.progress = [&file](const ReadProgress&) {
        std::ofstream(file.path(), std::ios::binary | std::ios::app) << "more";
        return true;
    };
    EXPECT_EQ(readMeasurements(file.path(), settings).rowCount(), 2'000'000U);
    EXPECT_EQ(names(), std::vector<std::string>{});
}

/// Sets variables of the environment for one test.
class Surroundings {
public:
    void set(const char* name, const char* value)
    {
        if (!m_former.contains(name)) {
            const char* former = std::getenv(name);
            m_former[name] = former ? std::optional<std::string>(former) : std::nullopt;
        }
        value ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~Surroundings()
    {
        for (const auto& [name, former] : m_former)
            former ? ::setenv(name.c_str(), former->c_str(), 1) : ::unsetenv(name.c_str());
    }

private:
    std::map<std::string, std::optional<std::string>> m_former;
};

struct PlaceCase {
    const char* cache;
    const char* home;
    const char* isOff;
    const char* expected;
};

TEST(ExtremesFolder, usualPlace)
{
    const PlaceCase cases[] = {
        {"/cache", "/home/one", nullptr, "/cache/tolvgraphing/extremes"},
        {nullptr, "/home/one", nullptr, "/home/one/.cache/tolvgraphing/extremes"},
        {"", "/home/one", "", "/home/one/.cache/tolvgraphing/extremes"},
        {"cache", "/home/one", nullptr, "/home/one/.cache/tolvgraphing/extremes"},
        {nullptr, nullptr, nullptr, "none"},
        {"cache", "", nullptr, "none"},
        {"/cache", "/home/one", "1", "none"},
    };
    for (const PlaceCase& one : cases) {
        Surroundings surroundings;
        surroundings.set("XDG_CACHE_HOME", one.cache);
        surroundings.set("HOME", one.home);
        surroundings.set("TOLVGRAPHING_NO_CACHE", one.isOff);
        const auto folder = ExtremesFolder::usualFolder();
        EXPECT_EQ(folder ? folder->path().string() : "none", one.expected);
    }
}

} // namespace

} // namespace TOLVGraphing::input
