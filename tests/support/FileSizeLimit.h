#pragma once

#include <csignal>
#include <stdexcept>
#include <sys/resource.h>

namespace TOLVGraphing::testing_support {

/// For the life of the object no file of this process grows beyond some bytes, which stands in for the end of a disk: writing more fails with "File too large".
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        if (::getrlimit(RLIMIT_FSIZE, &m_former) != 0)
            throw std::runtime_error("the limit of files cannot be read");
        const rlimit small{bytes, m_former.rlim_max};
        if (::setrlimit(RLIMIT_FSIZE, &small) != 0)
            throw std::runtime_error("the limit of files cannot be set");
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*m_formerHandler)(int);
    rlimit m_former{};
};

} // namespace TOLVGraphing::testing_support
