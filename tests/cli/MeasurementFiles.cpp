#include "MeasurementFiles.h"

#include <sndfile.h>

#include <stdexcept>

namespace TOLVGraphing::testing_support {

std::string npyFile(const std::string& type, const std::string& shape, const std::string& elements, bool isFortranOrder)
{
    std::string header = "{'descr': '" + type + "', 'fortran_order': " + (isFortranOrder ? "True" : "False") + ", 'shape': " + shape + ", }";
    constexpr std::size_t prefix = 10;
    constexpr std::size_t alignment = 64;
    header.append((alignment - (prefix + header.size() + 1) % alignment) % alignment, ' ');
    header += '\n';
    std::string file = "\x93NUMPY\x01";
    file += '\0';
    file += static_cast<char>(header.size() & 255U);
    file += static_cast<char>(header.size() >> 8U);
    return file + header + elements;
}

void writeSound(const std::string& path, int format, int sampleRate, int channels, const std::vector<float>& samples)
{
    SF_INFO info{};
    info.format = format;
    info.samplerate = sampleRate;
    info.channels = channels;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!file)
        throw std::runtime_error(path + ": " + sf_strerror(nullptr));
    const auto frames = static_cast<sf_count_t>(samples.size()) / channels;
    const sf_count_t written = sf_writef_float(file, samples.data(), frames);
    if (sf_close(file) != 0 || written != frames)
        throw std::runtime_error(path + ": cannot be written");
}

} // namespace TOLVGraphing::testing_support
