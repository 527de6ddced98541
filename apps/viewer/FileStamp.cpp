#include "FileStamp.h"

#include <sys/stat.h>

namespace TOLVGraphing::app {

std::optional<FileStamp> stampOfFile(const std::string& path)
{
    struct stat state {};
    if (::stat(path.c_str(), &state) != 0 || !S_ISREG(state.st_mode))
        return std::nullopt;
    constexpr std::int64_t kNanosecondsOfSecond = 1'000'000'000;
    return FileStamp{static_cast<std::uint64_t>(state.st_size), static_cast<std::int64_t>(state.st_mtim.tv_sec) * kNanosecondsOfSecond + state.st_mtim.tv_nsec};
}

} // namespace TOLVGraphing::app
