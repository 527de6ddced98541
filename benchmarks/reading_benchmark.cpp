// How fast a long table of text is read, beside the plain reading of the same bytes, and how much memory that takes; and how long a long column
// of floats takes from its opening to the first reduction to pixels.
//
// Every benchmark of reading reports bytes per second; the counter peak_MB is the largest resident set of the whole process so far, beside
// allowed_MB: three times the values of two columns and 100 MB. The benchmarks run in the order of the file, so that the reading of the
// two-column table, the case that the limit is for, comes before anything that takes more.

#include <desktop/input/MeasurementReader.h>
#include <desktop/input/SeriesSelection.h>

#include <TOLVGraphing/data/ColumnReduction.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

using TOLVGraphing::input::MeasurementTable;
using TOLVGraphing::input::readMeasurements;

constexpr std::size_t kRowCount = 10'000'000;
constexpr std::size_t kLongColumn = 100'000'000;
constexpr std::size_t kFloatsPerRow = 50;

/// A generator of its own, so that the files are the same everywhere.
class Noise {
public:
    std::uint64_t next()
    {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    /// -1 to 1.
    double nextValue() { return static_cast<double>(next() >> 11U) * 0x1p-52 - 1.0; }

private:
    std::uint64_t m_state = 1;
};

/// A file that is deleted at the end of the program.
class TemporaryFile {
public:
    using RowWriter = char* (*)(char* position, std::size_t row, Noise& noise);

    TemporaryFile(const char* name, const char* header, std::size_t rowCount, RowWriter writeRow)
        : m_path((std::filesystem::temp_directory_path() / ("reading_benchmark_" + std::to_string(::getpid()) + "_" + name)).string())
    {
        std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(m_path.c_str(), "wb"), std::fclose);
        if (!file)
            std::abort();
        Noise noise;
        char line[256];
        std::fputs(header, file.get());
        for (std::size_t row = 0; row < rowCount; ++row) {
            auto length = static_cast<std::size_t>(writeRow(line, row, noise) - line);
            if (std::fwrite(line, 1, length, file.get()) != length)
                std::abort();
        }
    }
    ~TemporaryFile() { std::remove(m_path.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const std::string& path() const { return m_path; }
    [[nodiscard]] std::int64_t size() const { return static_cast<std::int64_t>(std::filesystem::file_size(m_path)); }

private:
    std::string m_path;
};

char* writeFixed(char* position, double value, int digits)
{
    return std::to_chars(position, position + 32, value, std::chars_format::fixed, digits).ptr;
}

char* writeTwoColumns(char* position, std::size_t row, Noise& noise)
{
    position = writeFixed(position, static_cast<double>(row) * 1e-5, 5);
    *position++ = ',';
    position = writeFixed(position, noise.nextValue() * 10, 6);
    *position++ = '\n';
    return position;
}

char* writeExponents(char* position, std::size_t row, Noise& noise)
{
    position = std::to_chars(position, position + 32, static_cast<double>(row) * 2e-9, std::chars_format::scientific, 8).ptr;
    *position++ = ';';
    position = std::to_chars(position, position + 32, noise.nextValue(), std::chars_format::scientific, 15).ptr;
    *position++ = '\n';
    return position;
}

char* writeDates(char* position, std::size_t row, Noise& noise)
{
    auto length = std::snprintf(position, 32, "2012-%02zu-%02zu,", row / 28 % 12 + 1, row % 28 + 1);
    position = writeFixed(position + length, noise.nextValue() * 10, 6);
    *position++ = '\n';
    return position;
}

const TemporaryFile& twoColumnFile()
{
    static const TemporaryFile file("two_columns.csv", "time,value\n", kRowCount, writeTwoColumns);
    return file;
}

const TemporaryFile& exponentFile()
{
    static const TemporaryFile file("exponents.csv", "", kRowCount / 10, writeExponents);
    return file;
}

const TemporaryFile& dateFile()
{
    static const TemporaryFile file("dates.csv", "date,value\n", kRowCount / 10, writeDates);
    return file;
}

double peakMegabytes()
{
    struct rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024e-6;
}

void reportBytes(benchmark::State& state, const TemporaryFile& file)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * file.size());
    state.counters["file_MB"] = static_cast<double>(file.size()) * 1e-6;
    state.counters["peak_MB"] = peakMegabytes();
}

/// The limit: the same bytes, added up, in blocks of a megabyte.
void sumOfBytes(benchmark::State& state)
{
    const TemporaryFile& source = twoColumnFile();
    std::vector<unsigned char> block(std::size_t{1} << 20);
    for (auto _ : state) {
        std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(source.path().c_str(), "rb"), std::fclose);
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
        std::uint64_t sum = 0;
        while (std::size_t length = std::fread(block.data(), 1, block.size(), file.get())) {
            for (std::size_t index = 0; index < length; ++index)
                sum += block[index];
        }
        benchmark::DoNotOptimize(sum);
    }
    reportBytes(state, source);
}

void readTable(benchmark::State& state, const TemporaryFile& file, std::size_t rowCount)
{
    for (auto _ : state) {
        MeasurementTable table = readMeasurements(file.path());
        if (table.rowCount() != rowCount)
            state.SkipWithError("a wrong number of rows");
        benchmark::DoNotOptimize(table);
    }
    reportBytes(state, file);
}

void readTwoColumns(benchmark::State& state)
{
    readTable(state, twoColumnFile(), kRowCount);
    state.counters["allowed_MB"] = 3.0 * 2.0 * 4e-6 * static_cast<double>(kRowCount) + 100.0;
}

void readExponents(benchmark::State& state)
{
    readTable(state, exponentFile(), kRowCount / 10);
}

void readDates(benchmark::State& state)
{
    readTable(state, dateFile(), kRowCount / 10);
}

/// 100 million floats.
const TemporaryFile& longColumnFile()
{
    static const TemporaryFile file("long.f32", "", kLongColumn / kFloatsPerRow, [](char* position, std::size_t, Noise& noise) {
        for (std::size_t i = 0; i < kFloatsPerRow; ++i, position += sizeof(float)) {
            const auto value = static_cast<float>(noise.nextValue());
            std::memcpy(position, &value, sizeof value);
        }
        return position;
    });
    return file;
}

/// Lets the system forget what it has of the file in memory.
void forget(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ::fdatasync(descriptor);
    ::posix_fadvise(descriptor, 0, 0, POSIX_FADV_DONTNEED);
    ::close(descriptor);
}

enum class Opening { Read, Mapped, Kept };

/// From the opening of the file to its first reduction to pixel columns. The abscissae are those of a series beside it, so that only the column counts.
void openLongColumn(benchmark::State& state, Opening opening, bool isInMemory)
{
    using namespace TOLVGraphing;
    const TemporaryFile& file = longColumnFile();
    const std::filesystem::path folder = file.path() + ".extremes";
    input::ReadSettings settings;
    if (opening == Opening::Read)
        settings.shortestMappedFile = std::numeric_limits<std::uint64_t>::max();
    if (opening == Opening::Kept) {
        settings.extremesFolder = input::ExtremesFolder(folder);
        static_cast<void>(readMeasurements(file.path(), settings));
    }
    std::vector<float> rows(kLongColumn);
    for (std::size_t row = 0; row < rows.size(); ++row)
        rows[row] = static_cast<float>(row);
    const auto x = TOLVRealVector::vectorWithComponents(std::move(rows));
    ColumnReduction reduction;
    reduction.xMaximum = static_cast<float>(kLongColumn);
    reduction.yMinimum = -1.0F;
    reduction.yMaximum = 1.0F;
    reduction.rect = Rect(60.0, 20.0, 1520.0, 840.0);
    TOLVCurve curve;
    static_cast<void>(x->sortedStorage());
    for (auto _ : state) {
        if (!isInMemory) {
            state.PauseTiming();
            forget(file.path());
            state.ResumeTiming();
        }
        MeasurementTable table = readMeasurements(file.path(), settings);
        curve.reset();
        reduction.reduce(*x, *table.columns[0].values.takeVector(), curve);
        benchmark::DoNotOptimize(curve);
    }
    std::error_code error;
    std::filesystem::remove_all(folder, error);
    reportBytes(state, file);
}

BENCHMARK(sumOfBytes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readTwoColumns)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readExponents)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readDates)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(openLongColumn, keptAndInMemory, Opening::Kept, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(openLongColumn, mappedAndInMemory, Opening::Mapped, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(openLongColumn, readAndInMemory, Opening::Read, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(openLongColumn, keptAndOnDisk, Opening::Kept, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(openLongColumn, mappedAndOnDisk, Opening::Mapped, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(openLongColumn, readAndOnDisk, Opening::Read, false)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
