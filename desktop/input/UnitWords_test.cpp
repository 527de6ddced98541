#include <desktop/input/UnitWords.h>

#include <desktop/input/SampleRateLine.h>

#include <gtest/gtest.h>

namespace TOLVGraphing::input {

namespace {

TEST(UnitWords, units)
{
    for (const char* word : {"Second", "Volt", "Volts", "s", "ms", "us", "\u00B5s", "mV", "V", "kHz", "dB", "dBV", "\u00B0C", "%", "m/s", "m/s^2", "m/s2", "N*m", "kg m/s", "s-1",
             "[anything]", "(V)", "Hz", "mm", "k\u03A9", "-"})
        EXPECT_TRUE(isUnitWord(word)) << word;
}

TEST(UnitWords, notUnits)
{
    for (const char* word : {"", "CH1", "X", "time", "frequency", "alpha", "raw", "Voltage (V)", "2", "m/", "/s", "a word that is far too long", "NO"})
        EXPECT_FALSE(isUnitWord(word)) << word;
}

TEST(UnitWords, brackets)
{
    EXPECT_EQ(withoutBrackets("[V]"), "V");
    EXPECT_EQ(withoutBrackets("(m/s)"), "m/s");
    EXPECT_EQ(withoutBrackets("V"), "V");
    EXPECT_EQ(withoutBrackets("[V)"), "[V)");
    EXPECT_EQ(withoutBrackets("["), "[");
    EXPECT_EQ(withoutBrackets("[]"), "");
}

TEST(SampleRateLine, statedRates)
{
    EXPECT_EQ(statedSampleRate("\"Sampling Frequency (Hz)=\",500000000,\r\n"), 5e8);
    EXPECT_EQ(statedSampleRate("# Sample rate: 48 kHz"), 48000.0);
    EXPECT_EQ(statedSampleRate("samplerate=44100"), 44100.0);
    EXPECT_EQ(statedSampleRate("Sampling rate [MHz];2.5"), 2.5e6);
    EXPECT_EQ(statedSampleRate("# sample rate 360"), 360.0);
    for (const char* line : {"", "Rate: 5", "samples: 500", "Sample rate", "Sample rate: unknown", "Sample rate: 0", "Sample rate: -5", "sample interval: 5", "Sample rate,time"})
        EXPECT_FALSE(statedSampleRate(line)) << line;
}

} // namespace

} // namespace TOLVGraphing::input
