#pragma once

#include <TOLVMath/Export.h>

#include <string>

namespace TOLVGraphing {

/// A font by its name and its size in points. A value; the text system finds the face when it measures or draws, and another one where there is none of the name.
struct TOLV_EXPORT Font {
    /// The name of the face, for example "HelveticaNeue-Bold".
    std::string name = "Helvetica";
    /// In points; a desktop draws nothing in one that is not finite and above 0.
    double size = 12.0;

    /// The distance from the baseline to the top of the face in points, as the installed text system answers it.
    [[nodiscard]] double ascender() const;

    friend bool operator==(const Font&, const Font&) = default;
};

} // namespace TOLVGraphing
