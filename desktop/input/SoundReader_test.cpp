#include <desktop/input/SoundReader.h>

#include <desktop/input/testing/TemporaryFile.h>

#include <gtest/gtest.h>

#include <sndfile.h>

#include <array>
#include <fstream>
#include <initializer_list>

namespace TOLVGraphing::input {

namespace {

using testing::readContent;
using testing::summary;
using testing::summaryOfContent;
using testing::TemporaryFile;

std::string littleEndian(std::uint64_t value, std::size_t size)
{
    std::string bytes;
    for (std::size_t index = 0; index < size; ++index)
        bytes += static_cast<char>(static_cast<unsigned char>(value >> (8 * index)));
    return bytes;
}

/// A wav file of 16-bit samples.
std::string waveFile(unsigned channels, unsigned rate, const std::vector<std::int16_t>& samples)
{
    std::string data;
    for (std::int16_t sample : samples)
        data += littleEndian(static_cast<std::uint16_t>(sample), 2);
    std::string format
        = littleEndian(1, 2) + littleEndian(channels, 2) + littleEndian(rate, 4) + littleEndian(rate * channels * 2ULL, 4) + littleEndian(channels * 2ULL, 2) + littleEndian(16, 2);
    std::string body = "WAVEfmt " + littleEndian(format.size(), 4) + format + "data" + littleEndian(data.size(), 4) + data;
    return "RIFF" + littleEndian(body.size(), 4) + body;
}

TEST(SoundReader, oneChannelIsNamedByTheFile)
{
    TemporaryFile file(waveFile(1, 4, {0, 16384, -32768, 32767}), ".wav");
    MeasurementTable table = readMeasurements(file.path());
    std::string baseName = file.path().substr(file.path().rfind('/') + 1);
    baseName.resize(baseName.size() - 4);
    EXPECT_EQ(summary(table), "time[s]: 0 0.25 0.5 0.75 | " + baseName + ": 0 0.5 -1 0.9999695");
    EXPECT_EQ(table.sampleRate, 4.0);
    EXPECT_EQ(table.format.text(), "WAV (Microsoft), Signed 16 bit PCM");
}

TEST(SoundReader, twoChannelsAreLeftAndRight)
{
    EXPECT_EQ(summaryOfContent(waveFile(2, 8000, {0, 16384, 8192, -16384}), {}, ".wav"), "time[s]: 0 0.000125 | left: 0 0.25 | right: 0.5 -0.5");
}

TEST(SoundReader, moreChannelsAreNumbered)
{
    EXPECT_EQ(summaryOfContent(waveFile(3, 1, {0, 16384, -16384}), {}, ".wav"), "time[s]: 0 | channel 1: 0 | channel 2: 0.5 | channel 3: -0.5");
}

TEST(SoundReader, contentDecidesWhateverTheName)
{
    EXPECT_EQ(summaryOfContent(waveFile(2, 1, {0, 0}), {}, ".csv"), "time[s]: 0 | left: 0 | right: 0");
    std::string text = summaryOfContent("1,2\n3,4\n", {}, ".WAV");
    EXPECT_TRUE(text.starts_with("FILE: a sound file that cannot be decoded (")) << text;
    EXPECT_TRUE(text.ends_with("), expected wav, flac, aiff, ogg or another known kind")) << text;
}

TEST(SoundReader, timeIsRoundedOnce)
{
    std::vector<std::int16_t> samples(100000, 1);
    MeasurementTable table = readContent(waveFile(1, 44100, samples));
    ASSERT_EQ(table.rowCount(), samples.size());
    for (std::size_t frame = 0; frame < samples.size(); ++frame)
        ASSERT_EQ(table.columns[0].values[frame], static_cast<float>(static_cast<double>(frame) / 44100.0));
}

TEST(SoundReader, errors)
{
    EXPECT_EQ(summaryOfContent(waveFile(1, 8000, {}), {}, ".wav"), "FILE: a sound file without frames, expected at least one");
    for (const std::string& content :
        {std::string("RIFF\x10\0\0\0WAVEfmt ", 16), waveFile(0, 8000, {1}), waveFile(65535, 8000, {1}), std::string("fLaC\0\0\0\x22", 8), std::string("OggS")}) {
        std::string text = summaryOfContent(content, {}, ".wav");
        EXPECT_TRUE(text.starts_with("FILE: a sound file ")) << text;
    }
}

/// A flac file of silence, whose length has nothing to do with that of the sound.
std::string silence(std::size_t frameCount)
{
    const TemporaryFile file("", ".flac");
    SF_INFO info = {};
    info.samplerate = 8000;
    info.channels = 1;
    info.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    SNDFILE* sound = sf_open(file.path().c_str(), SFM_WRITE, &info);
    EXPECT_NE(sound, nullptr);
    const std::vector<short> samples(frameCount, 0);
    EXPECT_EQ(sf_write_short(sound, samples.data(), static_cast<sf_count_t>(frameCount)), static_cast<sf_count_t>(frameCount));
    sf_close(sound);
    std::ifstream stream(file.path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(SoundReader, silenceThatIsCompressedBeyondAllBoundsIsRefused)
{
    const std::string content = silence(4'000'000);
    ASSERT_LT(content.size() * kMaximumSoundValuesPerByte, 8'000'000U) << "shorter than any recording of so many frames";
    ReadSettings settings;
    EXPECT_EQ(readContent(content, settings, ".flac").rowCount(), 4'000'000U) << "few enough for any file";
    // A time and a sample for each frame.
    settings.mostSoundValues = 8'000'000;
    EXPECT_EQ(readContent(content, settings, ".flac").rowCount(), 4'000'000U);
    settings.mostSoundValues = 7'999'999;
    const std::string error = summaryOfContent(content, settings, ".flac");
    EXPECT_TRUE(error.starts_with("FILE: more than 3")) << error;
    EXPECT_TRUE(error.ends_with(" frames of 1 channels in " + std::to_string(content.size()) + " bytes, expected fewer for so short a file")) << error;
}

TEST(SoundReader, longSoundsNeedBytesForThemAndHaveThem)
{
    ReadSettings settings;
    settings.mostSoundValues = 1;
    EXPECT_EQ(readContent(waveFile(2, 44100, std::vector<std::int16_t>(20'000, 5)), settings, ".wav").rowCount(), 10'000U);
}

TEST(SoundReader, progressAndCancelling)
{
    std::string content = waveFile(2, 44100, std::vector<std::int16_t>(4000000, 5));
    ReadSettings settings;
    std::vector<ReadProgress> reports;
    settings.progress = [&reports](const ReadProgress& progress) {
        reports.push_back(progress);
        return true;
    };
    EXPECT_EQ(readContent(content, settings).rowCount(), 2000000U);
    ASSERT_GE(reports.size(), 2U);
    EXPECT_EQ(reports.back().bytesRead, content.size());
    EXPECT_LT(reports.front().bytesRead, content.size());
    settings.progress = [](const ReadProgress&) { return false; };
    EXPECT_THROW(readContent(content, settings), ReadingCancelled);
}

TEST(SoundReader, namesAndMagic)
{
    EXPECT_TRUE(hasSoundSuffix("a.wav"));
    EXPECT_TRUE(hasSoundSuffix("/x.y/a.b.FLAC"));
    EXPECT_FALSE(hasSoundSuffix("wav"));
    EXPECT_FALSE(hasSoundSuffix("a.csv"));
    EXPECT_FALSE(hasSoundSuffix(""));
    EXPECT_TRUE(hasSoundMagic("RIFF....WAVEfmt "));
    EXPECT_FALSE(hasSoundMagic("RIFF....AVI LIST"));
    EXPECT_TRUE(hasSoundMagic("FORM....AIFFCOMM"));
    EXPECT_FALSE(hasSoundMagic("FORMULA,1,2,3,4"));
    EXPECT_FALSE(hasSoundMagic(""));
}

} // namespace

} // namespace TOLVGraphing::input
