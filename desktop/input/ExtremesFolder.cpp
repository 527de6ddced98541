#include <desktop/input/ExtremesFolder.h>

#include <desktop/input/MappedFile.h>
#include <desktop/input/MeasurementError.h>
#include <desktop/output/TemporaryFiles.h>

#include <TOLVMath/ExtremePyramid.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace TOLVGraphing::input {

namespace {

namespace fs = std::filesystem;

/// Also the mark of the byte order: read in another one it is another number.
constexpr std::uint64_t kMagic = 0x544F'4C56'6578'7401U;
constexpr std::uint64_t kVersion = 1;
constexpr unsigned kBlockShift = ExtremePyramid::kUsualBlockShift;
constexpr const char* kSuffix = ".extremes";
/// Behind the suffix while a file is being written. One that is this old was left behind.
constexpr const char* kUnfinished = ".XXXXXX";
constexpr auto kLongestWriting = std::chrono::hours(1);

/// The words before the numbers.
using Header = std::array<std::uint64_t, 16>;
enum Word : std::size_t { Magic, Version, BlockShift, SampleCount, Size, Modified, Changed, Device, Node, Offset, Stride, NumberCount, GapCount, NumbersSum, Reserved, HeaderSum };

/// A sum that changes with every bit and with the order of the words.
std::uint64_t checksum(std::span<const std::byte> bytes)
{
    std::uint64_t sum = 0x9E37'79B9'7F4A'7C15U ^ bytes.size();
    for (std::size_t place = 0; place + sizeof sum <= bytes.size(); place += sizeof sum) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + place, sizeof word);
        sum = (sum ^ word) * 0xD6E8'FEB8'6659'FD93U;
        sum ^= sum >> 32U;
    }
    return sum;
}

Header headerFor(const FileColumn& column, std::uint64_t gapCount, std::uint64_t sumOfNumbers)
{
    Header header{};
    header[Magic] = kMagic;
    header[Version] = kVersion;
    header[BlockShift] = kBlockShift;
    header[SampleCount] = column.samples.size();
    header[Size] = column.file.size;
    header[Modified] = static_cast<std::uint64_t>(column.file.modified);
    header[Changed] = static_cast<std::uint64_t>(column.file.changed);
    header[Device] = column.file.device;
    header[Node] = column.file.node;
    header[Offset] = column.offset;
    header[Stride] = column.stride;
    header[NumberCount] = ExtremePyramid::numberCountFor(column.samples.size(), kBlockShift);
    header[GapCount] = gapCount;
    header[NumbersSum] = sumOfNumbers;
    header[HeaderSum] = checksum(std::as_bytes(std::span(header).first(HeaderSum)));
    return header;
}

/// Whether blocks all over the column have the extremes of the pyramid.
bool fits(const ExtremePyramid& pyramid, std::span<const float> samples)
{
    const std::size_t last = pyramid.entryCount(0) - 1;
    const std::size_t steps = std::min(ExtremesFolder::kProbeCount - 1, last);
    for (std::size_t step = 0; step <= steps; ++step) {
        const auto block = static_cast<std::size_t>(steps == 0 ? 0.0 : std::round(static_cast<double>(last) * (static_cast<double>(step) / static_cast<double>(steps))));
        const std::size_t from = block << kBlockShift;
        const auto part = samples.subspan(from, std::min(std::size_t{1} << kBlockShift, samples.size() - from));
        const bool hasNaN = std::any_of(part.begin(), part.end(), [](float sample) { return std::isnan(sample); });
        if ((hasNaN && !pyramid.hasNaN()) || pyramid.entry(0, block) != TOLVGraphing::extremesOf(part))
            return false;
    }
    return true;
}

bool makeFolders(const fs::path& path)
{
    if (::mkdir(path.c_str(), 0700) == 0 || errno == EEXIST)
        return true;
    return errno == ENOENT && path.has_parent_path() && path.parent_path() != path && makeFolders(path.parent_path()) && (::mkdir(path.c_str(), 0700) == 0 || errno == EEXIST);
}

/// A file of a name of its own that becomes the file at `target` in commit(), and otherwise nothing. Not brought to the disk: a checksum tells what did not arrive there.
class NewFile {
public:
    explicit NewFile(const fs::path& target)
        : m_target(target)
        , m_temporary(target.string() + kUnfinished)
        , m_descriptor(::mkostemp(m_temporary.data(), O_CLOEXEC))
        , m_temporaryName(m_temporary)
    {
    }
    ~NewFile()
    {
        if (m_descriptor < 0)
            return;
        ::close(m_descriptor);
        if (!m_isCommitted)
            ::unlink(m_temporary.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool write(std::span<const std::byte> bytes)
    {
        while (m_descriptor >= 0 && !bytes.empty()) {
            const ssize_t length = ::write(m_descriptor, bytes.data(), bytes.size());
            if (length < 0 && errno != EINTR)
                return false;
            bytes = bytes.subspan(length < 0 ? 0 : static_cast<std::size_t>(length));
        }
        return m_descriptor >= 0;
    }
    bool commit()
    {
        m_isCommitted = ::rename(m_temporary.c_str(), m_target.c_str()) == 0;
        return m_isCommitted;
    }

private:
    fs::path m_target;
    std::string m_temporary;
    int m_descriptor;
    output::TemporaryName m_temporaryName;
    bool m_isCommitted = false;
};

} // namespace

ExtremesFolder::ExtremesFolder(fs::path path, std::size_t shortestColumn, std::uint64_t largestSize)
    : m_path(std::move(path))
    , m_shortestColumn(shortestColumn)
    , m_largestSize(largestSize)
{
}

std::optional<ExtremesFolder> ExtremesFolder::usualFolder()
{
    const auto named = [](const char* variable) {
        const char* text = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): nothing here changes the environment.
        return fs::path(text ? text : "");
    };
    if (!named("TOLVGRAPHING_NO_CACHE").empty())
        return std::nullopt;
    const fs::path cache = named("XDG_CACHE_HOME");
    const fs::path home = named("HOME");
    if (!cache.is_absolute() && !home.is_absolute())
        return std::nullopt;
    return ExtremesFolder((cache.is_absolute() ? cache : home / ".cache") / "tolvgraphing" / "extremes");
}

fs::path ExtremesFolder::pathFor(const FileColumn& column) const
{
    // Not of the file's times, so that a changed file replaces what was kept of it.
    const std::array<std::uint64_t, 5> words{column.file.device, column.file.node, column.offset, column.stride, column.samples.size()};
    constexpr const char* digits = "0123456789abcdef";
    std::string name;
    for (std::uint64_t rest = checksum(std::as_bytes(std::span(words))), index = 0; index < 16; ++index, rest >>= 4U)
        name += digits[rest & 0xFU];
    return m_path / (name + kSuffix);
}

std::optional<ColumnExtremes> ExtremesFolder::extremesOf(const FileColumn& column) const
{
    std::shared_ptr<const MappedFile> file;
    try {
        file = MappedFile::fileAtPath(pathFor(column).string());
    } catch (const MeasurementError&) {
        return std::nullopt;
    }
    const std::size_t numberCount = ExtremePyramid::numberCountFor(column.samples.size(), kBlockShift);
    if (column.samples.empty() || file->bytes().size() != sizeof(Header) + numberCount * sizeof(float))
        return std::nullopt;
    Header header;
    std::memcpy(header.data(), file->bytes().data(), sizeof header);
    const auto numbers = file->bytes().subspan(sizeof header);
    if (header != headerFor(column, header[GapCount], header[NumbersSum]) || header[GapCount] > column.samples.size() || checksum(numbers) != header[NumbersSum])
        return std::nullopt;
    const auto gapCount = static_cast<std::size_t>(header[GapCount]);
    auto pyramid = std::make_shared<const ExtremePyramid>(file, reinterpret_cast<const float*>(numbers.data()), column.samples.size(), kBlockShift, gapCount > 0);
    if (!fits(*pyramid, column.samples) || file->hasLostPages())
        return std::nullopt;
    return ColumnExtremes{std::move(pyramid), gapCount};
}

void ExtremesFolder::keep(const FileColumn& column, const ColumnExtremes& extremes) const
{
    const ExtremePyramid& pyramid = *extremes.pyramid;
    const auto numbers = std::as_bytes(pyramid.numbers());
    if (pyramid.blockShift() != kBlockShift || pyramid.sampleCount() != column.samples.size() || sizeof(Header) + numbers.size() > m_largestSize || !makeFolders(m_path))
        return;
    const Header header = headerFor(column, extremes.gapCount, checksum(numbers));
    const fs::path target = pathFor(column);
    NewFile file(target);
    if (file.write(std::as_bytes(std::span(header))) && file.write(numbers) && file.commit())
        dropOldest(target);
}

void ExtremesFolder::dropOldest(const fs::path& newest) const
{
    struct KeptFile {
        fs::file_time_type written;
        fs::path path;
        std::uint64_t size;
    };
    std::vector<KeptFile> files;
    std::uint64_t size = 0;
    std::error_code error;
    for (fs::directory_iterator entry(m_path, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        // What others remove meanwhile has no size any more.
        std::error_code gone;
        const bool isKept = entry->path().extension() == kSuffix;
        const bool isUnfinished = !isKept && entry->path().stem().extension() == kSuffix;
        if ((!isKept && !isUnfinished) || !entry->is_regular_file(gone) || entry->is_symlink(gone))
            continue;
        const auto written = entry->last_write_time(gone);
        const std::uint64_t length = gone ? 0 : entry->file_size(gone);
        if (gone)
            continue;
        if (isUnfinished && fs::file_time_type::clock::now() - written > kLongestWriting)
            fs::remove(entry->path(), gone);
        if (!isKept)
            continue;
        size += length;
        if (entry->path() != newest)
            files.push_back({written, entry->path(), length});
    }
    std::sort(files.begin(), files.end(), [](const KeptFile& one, const KeptFile& other) { return one.written < other.written; });
    for (const KeptFile& file : files) {
        if (size <= m_largestSize)
            return;
        fs::remove(file.path, error);
        size -= file.size;
    }
}

} // namespace TOLVGraphing::input
