#include <desktop/input/SoundReader.h>

#include <desktop/input/MeasurementError.h>

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <utility>

namespace TOLVGraphing::input {

namespace {

constexpr std::size_t kBlockLength = std::size_t{1} << 20;
/// A header may promise any number of frames; room beyond this is made as they come.
constexpr sf_count_t kMostReservedFrames = sf_count_t{1} << 24;
constexpr std::size_t kBlockFrames = 16384;

struct SoundFileDeleter {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, SoundFileDeleter>;

/// The bytes of the source as the library wants them: with a place that can be moved.
class SoundBytes {
public:
    explicit SoundBytes(ByteSource& source);

    SF_VIRTUAL_IO* callbacks() { return &m_callbacks; }
    [[nodiscard]] std::uint64_t byteCount() const { return static_cast<std::uint64_t>(m_length); }
    /// An error that could not pass through the library.
    void rethrow() const
    {
        if (m_error)
            std::rethrow_exception(m_error);
    }

private:
    static sf_count_t length(void* self) { return static_cast<SoundBytes*>(self)->m_length; }
    static sf_count_t seek(sf_count_t offset, int whence, void* self);
    static sf_count_t read(void* target, sf_count_t count, void* self);
    static sf_count_t write(const void*, sf_count_t, void*) { return 0; }
    static sf_count_t tell(void* self) { return static_cast<SoundBytes*>(self)->m_place; }

    ByteSource& m_source;
    /// All bytes, where the source itself cannot be moved in.
    std::vector<char> m_bytes;
    sf_count_t m_length = 0;
    sf_count_t m_place = 0;
    std::exception_ptr m_error;
    SF_VIRTUAL_IO m_callbacks = {length, seek, read, write, tell};
};

SoundBytes::SoundBytes(ByteSource& source) : m_source(source)
{
    if (source.totalBytes()) {
        m_length = static_cast<sf_count_t>(*source.totalBytes());
        return;
    }
    for (std::size_t got = kBlockLength; got == kBlockLength;) {
        std::size_t before = m_bytes.size();
        m_bytes.resize(before + kBlockLength);
        got = source.read(m_bytes.data() + before, kBlockLength);
        m_bytes.resize(before + got);
    }
    m_length = static_cast<sf_count_t>(m_bytes.size());
}

sf_count_t SoundBytes::seek(sf_count_t offset, int whence, void* self)
{
    auto& bytes = *static_cast<SoundBytes*>(self);
    sf_count_t start = whence == SEEK_CUR ? bytes.m_place : whence == SEEK_END ? bytes.m_length : 0;
    sf_count_t place = 0;
    // Broken headers ask for places beyond all bounds.
    if (__builtin_add_overflow(start, offset, &place) || place < 0)
        return -1;
    bytes.m_place = place;
    return place;
}

sf_count_t SoundBytes::read(void* target, sf_count_t count, void* self)
{
    auto& bytes = *static_cast<SoundBytes*>(self);
    if (count <= 0 || bytes.m_place >= bytes.m_length)
        return 0;
    auto length = static_cast<std::size_t>(std::min(count, bytes.m_length - bytes.m_place));
    if (!bytes.m_source.totalBytes()) {
        std::memcpy(target, bytes.m_bytes.data() + bytes.m_place, length);
    } else {
        // Exceptions must not cross the library, which is written in C.
        try {
            length = bytes.m_source.readAt(static_cast<std::uint64_t>(bytes.m_place), static_cast<char*>(target), length);
        } catch (...) {
            bytes.m_error = std::current_exception();
            return 0;
        }
    }
    bytes.m_place += static_cast<sf_count_t>(length);
    return static_cast<sf_count_t>(length);
}

class SoundReader {
public:
    SoundReader(ByteSource& source, const ReadSettings& settings) : m_source(source), m_settings(settings), m_bytes(source) {}

    MeasurementTable read();

private:
    void open();
    void startTable();
    void readFrames();
    void requireRoomFor(std::size_t frameCount) const;
    void takeFrames(const float* samples, std::size_t count);
    void reportProgress() const;
    std::string channelName(std::size_t channel) const;
    std::string formatName();
    [[noreturn]] void fail(std::string found, std::string expected) const;

    ByteSource& m_source;
    const ReadSettings& m_settings;
    SoundBytes m_bytes;
    SF_INFO m_info = {};
    SoundFile m_file;
    MeasurementTable m_table;
    std::size_t m_channelCount = 0;
    std::size_t m_frameCount = 0;
};

MeasurementTable SoundReader::read()
{
    open();
    startTable();
    readFrames();
    for (MeasurementColumn& column : m_table.columns)
        column.gapCount = static_cast<std::size_t>(std::count_if(column.values.begin(), column.values.end(), [](float value) { return std::isnan(value); }));
    return std::move(m_table);
}

void SoundReader::open()
{
    m_file.reset(sf_open_virtual(m_bytes.callbacks(), SFM_READ, &m_info, &m_bytes));
    m_bytes.rethrow();
    if (!m_file)
        fail("a sound file that cannot be decoded (" + std::string(sf_strerror(nullptr)) + ")", "expected wav, flac, aiff, ogg or another known kind");
    if (m_info.channels < 1 || static_cast<std::size_t>(m_info.channels) >= kMaximumColumnCount)
        fail("a sound file of " + std::to_string(m_info.channels) + " channels", "expected 1 to " + std::to_string(kMaximumColumnCount - 1));
    if (m_info.samplerate < 1)
        fail("a sampling rate of " + std::to_string(m_info.samplerate), "expected at least one sample per second");
    if (m_info.frames < 1)
        fail("a sound file without frames", "expected at least one");
    m_channelCount = static_cast<std::size_t>(m_info.channels);
}

void SoundReader::startTable()
{
    m_table.sourceName = m_source.name();
    m_table.sampleRate = static_cast<double>(m_info.samplerate);
    m_table.format.kind = formatName();
    m_table.columns.resize(m_channelCount + 1);
    for (std::size_t index = 0; index < m_table.columns.size(); ++index) {
        MeasurementColumn& column = m_table.columns[index];
        column.number = index + 1;
        column.name = index == 0 ? "time" : channelName(index);
        column.unit = index == 0 ? "s" : "";
        column.values.own().reserve(static_cast<std::size_t>(std::min(m_info.frames, kMostReservedFrames / m_info.channels)));
    }
}

void SoundReader::readFrames()
{
    std::size_t blockFrames = std::max<std::size_t>(kBlockFrames / m_channelCount, 1);
    std::vector<float> samples(blockFrames * m_channelCount);
    std::size_t sinceReport = 0;
    for (;;) {
        sf_count_t count = sf_readf_float(m_file.get(), samples.data(), static_cast<sf_count_t>(blockFrames));
        m_bytes.rethrow();
        if (count <= 0)
            break;
        takeFrames(samples.data(), static_cast<std::size_t>(count));
        sinceReport += static_cast<std::size_t>(count) * m_channelCount * sizeof(float);
        if (sinceReport >= kBlockLength * 4) {
            sinceReport = 0;
            reportProgress();
        }
    }
    bool isWholeCountKnown = m_info.frames < SF_COUNT_MAX;
    if (sf_error(m_file.get()) != SF_ERR_NO_ERROR)
        fail("a sound file that cannot be decoded behind frame " + std::to_string(m_frameCount) + " (" + sf_strerror(m_file.get()) + ")",
            "expected " + std::to_string(m_info.frames) + " frames");
    if (m_frameCount == 0 || (isWholeCountKnown && m_frameCount < static_cast<std::size_t>(m_info.frames)))
        fail("the end of the sound file behind frame " + std::to_string(m_frameCount), "expected " + std::to_string(m_info.frames) + " frames");
    reportProgress();
}

/// Before more is kept than such a file can be meant to have.
void SoundReader::requireRoomFor(std::size_t frameCount) const
{
    const std::uint64_t valueCount = static_cast<std::uint64_t>(frameCount) * (m_channelCount + 1);
    if (valueCount > m_settings.mostSoundValues && valueCount / kMaximumSoundValuesPerByte > m_bytes.byteCount())
        fail("more than " + std::to_string(m_frameCount) + " frames of " + std::to_string(m_channelCount) + " channels in " + std::to_string(m_bytes.byteCount()) + " bytes",
            "expected fewer for so short a file");
}

void SoundReader::takeFrames(const float* samples, std::size_t count)
{
    requireRoomFor(m_frameCount + count);
    const auto rate = static_cast<double>(m_info.samplerate);
    std::vector<float>& time = m_table.columns[0].values.own();
    for (std::size_t frame = 0; frame < count; ++frame)
        time.push_back(static_cast<float>(static_cast<double>(m_frameCount + frame) / rate));
    for (std::size_t channel = 0; channel < m_channelCount; ++channel) {
        std::vector<float>& values = m_table.columns[channel + 1].values.own();
        for (std::size_t frame = 0; frame < count; ++frame)
            values.push_back(samples[frame * m_channelCount + channel]);
    }
    m_frameCount += count;
}

/// The library reads where it likes, so the frames tell how far it is.
void SoundReader::reportProgress() const
{
    if (!m_settings.progress)
        return;
    ReadProgress progress{m_source.bytesRead(), m_source.totalBytes()};
    if (progress.totalBytes) {
        double part = static_cast<double>(m_frameCount) / static_cast<double>(std::max(m_info.frames, sf_count_t{1}));
        progress.bytesRead = static_cast<std::uint64_t>(std::min(part, 1.0) * static_cast<double>(*progress.totalBytes));
    }
    if (!m_settings.progress(progress))
        throw ReadingCancelled(m_source.name());
}

std::string SoundReader::channelName(std::size_t channel) const
{
    if (m_channelCount == 2)
        return channel == 1 ? "left" : "right";
    if (m_channelCount == 1 && m_source.name() != "-") {
        std::string name = m_source.name().substr(m_source.name().find_last_of('/') + 1);
        std::size_t point = name.find_last_of('.');
        return point == std::string::npos || point == 0 ? name : name.substr(0, point);
    }
    return "channel " + std::to_string(channel);
}

std::string SoundReader::formatName()
{
    auto nameOf = [this](int format) {
        SF_FORMAT_INFO info = {};
        info.format = format;
        bool isKnown = sf_command(m_file.get(), SFC_GET_FORMAT_INFO, &info, sizeof info) == 0 && info.name;
        return std::string(isKnown ? info.name : "sound");
    };
    return nameOf(m_info.format & SF_FORMAT_TYPEMASK) + ", " + nameOf(m_info.format & SF_FORMAT_SUBMASK);
}

void SoundReader::fail(std::string found, std::string expected) const
{
    throw MeasurementError(m_source.name(), 0, std::move(found), std::move(expected));
}

} // namespace

MeasurementTable readSound(ByteSource& source, const ReadSettings& settings)
{
    return SoundReader(source, settings).read();
}

bool hasSoundSuffix(std::string_view fileName)
{
    constexpr auto suffixes
        = std::to_array<std::string_view>({"wav", "wave", "flac", "aif", "aiff", "aifc", "ogg", "oga", "opus", "au", "snd", "caf", "w64", "rf64", "mp3", "voc"});
    std::string suffix(fileName.substr(std::min(fileName.find_last_of('.') + 1, fileName.size())));
    for (char& character : suffix)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    return suffix.size() < fileName.size() && std::find(suffixes.begin(), suffixes.end(), suffix) != suffixes.end();
}

bool hasSoundMagic(std::string_view start)
{
    bool isRiff = start.starts_with("RIFF") || start.starts_with("RIFX") || start.starts_with("RF64");
    bool isWave = isRiff && start.size() >= 12 && start.substr(8, 4) == "WAVE";
    bool isForm = start.starts_with("FORM") && start.size() >= 12 && (start.substr(8, 4) == "AIFF" || start.substr(8, 4) == "AIFC" || start.substr(8, 4) == "8SVX");
    using namespace std::string_view_literals;
    return isWave || isForm || start.starts_with("fLaC") || start.starts_with("OggS") || start.starts_with(".snd") || start.starts_with("dns.") || start.starts_with("caff\0"sv)
        || start.starts_with("ID3\2"sv) || start.starts_with("ID3\3"sv) || start.starts_with("ID3\4"sv) || start.starts_with("riff\x2E\x91"sv);
}

} // namespace TOLVGraphing::input
