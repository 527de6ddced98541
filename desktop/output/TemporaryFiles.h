#pragma once

#include <TOLVMath/Export.h>

#include <filesystem>

namespace TOLVGraphing {

/// From now on a signal that asks the program to end (SIGHUP, SIGINT, SIGTERM) first removes the temporary files of what is being written, and then ends the program as the signal does by itself: a shell answers 128 and its number.
/// A signal that is ignored, as nohup does it, or that has a handler already, stays as it is. More calls change nothing. For a program to call at its start; libraries leave signals to programs.
TOLV_EXPORT void removeTemporaryFilesAtSignals();

namespace output {

/// Says for the life of the object that a file is a temporary one: a signal that ends the program removes it. Where the name is told before the file is made, there is no moment without it; a file that has been renamed is not found under
/// it any more, and nothing happens. A relative name counts from the folder that is the current one when the signal comes. Names beyond those of 64 files at a time, and those that the system finds too long, are not remembered. May be made in any thread.
class TOLV_EXPORT TemporaryName {
public:
    /// Remembers the name (copied).
    explicit TemporaryName(const std::filesystem::path& path);
    ~TemporaryName();
    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;

private:
    /// The place among the names; negative without one.
    int m_place = -1;
};

} // namespace output

} // namespace TOLVGraphing
