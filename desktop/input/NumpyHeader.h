#pragma once

#include <desktop/input/ByteSource.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TOLVGraphing::input {

/// What the header of an npy file says.
struct NumpyHeader {
    /// "1.0", "2.0" or "3.0".
    std::string version;
    /// The element type as it stands in the file, for example "<f8".
    std::string elementType;
    /// The parts of it: '<', '>', '|' or '='; a letter; bytes per element.
    char byteOrder = '|';
    char elementLetter = 'f';
    std::size_t elementSize = 0;
    bool isFortranOrder = false;
    /// One or two dimensions, none of them 0.
    std::vector<std::uint64_t> shape;

    friend bool operator==(const NumpyHeader&, const NumpyHeader&) = default;
};

/// Reads the header from the start of the source, up to the first element. Throws MeasurementError where it is not one, or where the
/// element type or the shape is not supported.
[[nodiscard]] NumpyHeader readNumpyHeader(ByteSource& source);

} // namespace TOLVGraphing::input
