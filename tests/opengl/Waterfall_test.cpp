// The example program: its spectra, its picture and what it says about bad input.

#include "TestContext.h"

#include <examples/waterfall/Decay.h>
#include <tests/desktop/Pixels.h>
#include <tests/desktop/Process.h>
#include <tests/desktop/TemporaryFolder.h>

#include <TestPaths.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

using namespace TOLVGraphing::testing_support;
using testing::HasSubstr;

namespace {

constexpr double kSampleRate = 48000.0;

/// A tone that loses `decibelsPerSecond`, from its loudest sample on.
std::vector<float> decayingTone(double frequency, double decibelsPerSecond, double seconds = 0.6)
{
    std::vector<float> samples(static_cast<std::size_t>(seconds * kSampleRate));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = static_cast<double>(i) / kSampleRate;
        samples[i] = static_cast<float>(std::pow(10.0, -decibelsPerSecond * time / 20.0) * std::sin(2.0 * std::numbers::pi * frequency * time));
    }
    return samples;
}

/// A mono file of 16-bit samples.
std::string waveFile(const std::vector<float>& samples)
{
    const auto number = [](std::uint32_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i)
            text += static_cast<char>(value >> (8 * i));
        return text;
    };
    const auto length = static_cast<std::uint32_t>(samples.size() * 2);
    std::string file = "RIFF" + number(36 + length, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(1, 2) + number(48000, 4) + number(96000, 4) + number(2, 2)
        + number(16, 2) + "data" + number(length, 4);
    for (const float sample : samples)
        file += number(static_cast<std::uint32_t>(static_cast<std::int32_t>(std::lround(sample * 32767.0F))), 2);
    return file;
}

std::size_t loudestFrequency(const DecaySlice& slice)
{
    return static_cast<std::size_t>(std::max_element(slice.levels.begin(), slice.levels.end()) - slice.levels.begin());
}

TEST(WaterfallDecay, AToneStandsAtItsFrequencyAndFallsAsFastAsItDecays)
{
    DecaySettings settings;
    settings.start = 0.0;
    settings.length = 0.2;
    settings.sliceCount = 11;
    const Decay decay = cumulativeDecay(decayingTone(1000.0, 150.0), kSampleRate, settings);
    ASSERT_EQ(decay.slices.size(), 11U);
    for (std::size_t i = 0; i < decay.slices.size(); ++i) {
        const DecaySlice& slice = decay.slices[i];
        EXPECT_NEAR(slice.time, 20.0 * static_cast<double>(i), 1e-9);
        const std::size_t loudest = loudestFrequency(slice);
        // Half of a step between frequencies, 1/48 octave, and half of a band.
        EXPECT_NEAR(std::log2(decay.frequencies[loudest] / 1000.0F), 0.0F, 1.0F / 48.0F);
        // 20 ms of 150 dB/s are 3 dB.
        EXPECT_NEAR(slice.levels[loudest], -3.0F * static_cast<float>(i), 0.02F);
    }
}

TEST(WaterfallDecay, FrequenciesAreEquallySpacedFromTheLowestToTheHighest)
{
    DecaySettings settings;
    const Decay decay = cumulativeDecay(decayingTone(1000.0, 100.0), kSampleRate, settings);
    EXPECT_EQ(decay.frequencies.front(), 80.0F);
    EXPECT_NEAR(decay.frequencies.back(), 20000.0F, 0.01F);
    for (std::size_t i = 1; i < decay.frequencies.size(); ++i)
        EXPECT_LE(decay.frequencies[i] / decay.frequencies[i - 1], std::exp2(1.0F / 48.0F) * 1.000001F);
    // Nothing above half the sampling rate.
    EXPECT_NEAR(cumulativeDecay(decayingTone(1000.0, 100.0), 16000.0, settings).frequencies.back(), 8000.0F, 0.01F);
}

TEST(WaterfallDecay, BeginsBehindTheLastLoudPart)
{
    // Silence, 100 ms of a tone, then the same 30 dB softer.
    std::vector<float> samples(48000, 0.0F);
    for (std::size_t i = 4800; i < samples.size(); ++i)
        samples[i] = (i < 9600 ? 1.0F : 0.0316F) * std::sin(0.13F * static_cast<float>(i));
    DecaySettings automatic;
    DecaySettings given;
    given.start = 0.2;
    const Decay found = cumulativeDecay(samples, kSampleRate, automatic);
    const Decay expected = cumulativeDecay(samples, kSampleRate, given);
    EXPECT_EQ(found.slices.front().levels, expected.slices.front().levels);
}

TEST(WaterfallDecay, ARecordingThatIsLoudToItsEndBeginsAWindowBeforeThat)
{
    const std::vector<float> samples = decayingTone(1000.0, 0.0);
    DecaySettings automatic;
    DecaySettings given;
    given.start = 0.6 - given.window;
    EXPECT_EQ(cumulativeDecay(samples, kSampleRate, automatic).slices.front().levels, cumulativeDecay(samples, kSampleRate, given).slices.front().levels);
    for (const double start : {0.6 - given.window + 0.001, -0.001, 1e30}) {
        given.start = start;
        EXPECT_THROW((void)cumulativeDecay(samples, kSampleRate, given), std::runtime_error) << start;
    }
}

TEST(WaterfallDecay, RecordingsThatHaveNoneAreRefused)
{
    const float kNaN = std::numeric_limits<float>::quiet_NaN();
    const DecaySettings settings;
    EXPECT_THROW((void)cumulativeDecay(std::vector<float>{}, kSampleRate, settings), std::runtime_error);
    EXPECT_THROW((void)cumulativeDecay(std::vector<float>(2000, 1.0F), kSampleRate, settings), std::runtime_error);
    EXPECT_THROW((void)cumulativeDecay(std::vector<float>(20000, 0.0F), kSampleRate, settings), std::runtime_error);
    EXPECT_THROW((void)cumulativeDecay(std::vector<float>(20000, kNaN), kSampleRate, settings), std::runtime_error);
    EXPECT_THROW((void)cumulativeDecay(decayingTone(1000.0, 100.0), 100.0, settings), std::runtime_error);
}

class WaterfallProgram : public testing::Test {
protected:
    void SetUp() override
    {
        std::string whyNot;
        if (!TestContext::make(Platform::EGL, whyNot))
            GTEST_SKIP() << whyNot;
    }

    TemporaryFolder m_folder;
    std::string m_output = m_folder.path("waterfall.png");
};

TEST_F(WaterfallProgram, DrawsARecordingWithoutADisplay)
{
    const std::string recording = m_folder.write("tone.wav", waveFile(decayingTone(1000.0, 100.0)));
    const ProcessResult drawn = runProcess({TOLV_PROGRAM_WATERFALL, "--output", m_output, "--size", "500", "300", "--start", "0", recording});
    ASSERT_EQ(drawn.status, 0) << drawn.text();
    EXPECT_EQ(drawn.output, m_output + "\n");
    EXPECT_EQ(drawn.error, "");
    const Pixels pixels = pixelsOfPNGFile(m_output);
    ASSERT_EQ(pixels.width, 1000);
    ASSERT_EQ(pixels.height, 600);
    EXPECT_EQ(pixels.colorAt(3, 3), "#ffffff");
    // The front edge of the floor is dark, and the level at the start has the colour of the largest.
    std::size_t dark = 0;
    for (int y = 300; y < 600; ++y)
        dark += pixels.colorAt(300, y) == "#212126" ? 1 : 0;
    EXPECT_GE(dark, 1U);
    std::size_t warm = 0;
    for (std::size_t i = 0; i < pixels.bytes.size(); i += 3)
        warm += pixels.bytes[i] > 230 && pixels.bytes[i + 1] < 190 && pixels.bytes[i + 2] < 110 ? 1 : 0;
    EXPECT_GT(warm, 20U);
}

TEST_F(WaterfallProgram, BadInputGetsAMessage)
{
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    const std::string table = m_folder.write("table.csv", "x,y\n1,2\n2,3\n");
    const std::string silence = m_folder.write("silence.wav", waveFile(std::vector<float>(20000, 0.0F)));
    const std::string tone = m_folder.write("tone.wav", waveFile(decayingTone(1000.0, 100.0)));
    const Case cases[] = {
        {{"--output", m_output, m_folder.path("none.wav")}, "none.wav"},
        {{"--output", m_output, table}, "expected a sound file"},
        {{"--output", m_output, silence}, "silent"},
        {{"--output", m_folder.path("missing/folder.png"), tone}, "folder.png"},
        {{"--output", m_output, "--slices", "1", tone}, "--slices"},
        {{"--output", m_output, "--size", "10", "10", tone}, "--size"},
    };
    for (const Case& wrong : cases) {
        std::vector<std::string> arguments{TOLV_PROGRAM_WATERFALL};
        arguments.insert(arguments.end(), wrong.arguments.begin(), wrong.arguments.end());
        const ProcessResult result = runProcess(arguments);
        EXPECT_GT(result.status, 0) << wrong.message;
        EXPECT_THAT(result.error, HasSubstr(wrong.message));
    }
    EXPECT_EQ(m_folder.read("waterfall.png"), "");
}

} // namespace
