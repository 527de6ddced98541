#include "MeasuredFiles.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>

namespace TOLVGraphing::testing_support {

namespace {

/// The number's bytes, the lowest one first.
template <typename Number>
std::string bytesOf(Number number)
{
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

double dyingTone(double seconds)
{
    return std::sin(40.0 * seconds) * std::exp(-1.5 * seconds);
}

/// Two seconds of 16-bit mono sound, 8000 samples a second.
std::string recording()
{
    constexpr std::uint32_t kRate = 8000;
    std::string samples;
    for (std::uint32_t i = 0; i < 2 * kRate; ++i)
        samples += bytesOf(static_cast<std::int16_t>(std::lround(30000.0 * dyingTone(static_cast<double>(i) / kRate))));
    const auto length = static_cast<std::uint32_t>(samples.size());
    return "RIFF" + bytesOf(length + 36U) + "WAVEfmt " + bytesOf(std::uint32_t{16}) + bytesOf(std::uint16_t{1}) + bytesOf(std::uint16_t{1}) + bytesOf(kRate) + bytesOf(2 * kRate)
        + bytesOf(std::uint16_t{2}) + bytesOf(std::uint16_t{16}) + "data" + bytesOf(length) + samples;
}

std::string weather()
{
    std::ostringstream text;
    text << "date,temp_max,temp_min\n";
    for (int day = 1; day <= 28; ++day)
        text << "2026-02-" << (day < 10 ? "0" : "") << day << "," << std::round(60.0 + 40.0 * std::sin(day / 5.0)) / 10.0 << ","
             << std::round(-10.0 + 30.0 * std::sin(day / 6.0)) / 10.0 << "\n";
    return text.str();
}

std::string response()
{
    std::ostringstream text;
    text << "frequency;level\nHz;dB\n";
    for (int i = 0; i <= 300; ++i) {
        const double frequency = 20.0 * std::pow(10.0, i / 100.0);
        text << frequency << ";" << -10.0 * std::log10(1.0 + std::pow(frequency / 2000.0, 4.0)) << "\n";
    }
    return text.str();
}

std::string scope()
{
    std::ostringstream text;
    text << "time,CH1,CH2\nSecond,Volt,Volt\n";
    for (int i = 0; i < 200; ++i)
        text << i * 0.005 << "," << dyingTone(i * 0.005) << "," << (i / 25) % 2 << "\n";
    return text.str();
}

std::string rawNumbers()
{
    std::string bytes;
    for (int i = 0; i < 20'000; ++i)
        bytes += bytesOf(static_cast<float>(dyingTone(i * 1e-4)));
    return bytes;
}

} // namespace

void writeMeasuredFile(const TemporaryFolder& folder, const std::string& name)
{
    static const std::map<std::string, std::function<std::string()>> kFiles{
        {"recording.wav", recording},
        {"weather.csv", weather},
        {"response.csv", response},
        {"scope.csv", scope},
        {"samples.f32", rawNumbers},
        {"sales.csv", [] { return "year,north,south\n2022,14,9\n2023,17,12\n2024,16,15\n2025,21,19\n"; }},
        {"broken.csv", [] { return "time,level\n0,1\n1,\n"; }},
    };
    const auto file = kFiles.find(name);
    if (file == kFiles.end())
        throw std::runtime_error("found the file " + name + " in the comment above a block, expected one that tests/manual/MeasuredFiles.cpp knows");
    folder.write(name, file->second());
}

} // namespace TOLVGraphing::testing_support
