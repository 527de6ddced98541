#pragma once

#include <TOLVMath/Export.h>

#include <stdexcept>
#include <string>

namespace TOLVGraphing {

/// A file that cannot be read or written. `what()` reads "PATH: REASON".
class TOLV_EXPORT FileError : public std::runtime_error {
public:
    /// Of a path and a reason, both as they will be read; no full stop at the end.
    FileError(std::string path, std::string reason);
    /// The reason is what was attempted, followed by the system's text for the error number (a value of errno): "cannot be opened: No such file or directory".
    FileError(std::string path, const std::string& attempt, int errorNumber);

    /// The path as the caller gave it.
    [[nodiscard]] const std::string& path() const { return m_path; }
    /// What stands behind the path in `what()`.
    [[nodiscard]] const std::string& reason() const { return m_reason; }

private:
    std::string m_path;
    std::string m_reason;
};

} // namespace TOLVGraphing
