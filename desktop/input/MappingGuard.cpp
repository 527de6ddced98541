#include <desktop/input/MappingGuard.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <mutex>
#include <sys/mman.h>
#include <unistd.h>

#if defined(__SANITIZE_THREAD__)
#define TOLVGRAPHING_SANITIZES_THREADS 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TOLVGRAPHING_SANITIZES_THREADS 1
#endif
#endif

#ifdef TOLVGRAPHING_SANITIZES_THREADS
// Of ThreadSanitizer's run time, which has no header for them.
extern "C" void AnnotateIgnoreWritesBegin(const char* file, int line);
extern "C" void AnnotateIgnoreWritesEnd(const char* file, int line);
#endif

namespace TOLVGraphing::input {

/// Read by the signal's handler, so nothing but atomics. The begin is 0 while the range is nobody's.
struct MappingGuard::Range {
    std::atomic<bool> isTaken = false;
    std::atomic<std::uintptr_t> begin = 0;
    std::atomic<std::uintptr_t> end = 0;
    std::atomic<bool> hasLostPages = false;
};

namespace {

static_assert(std::atomic<std::uintptr_t>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

/// A file cut to nothing is replaced in steps of this length, so that it costs few signals.
constexpr std::uintptr_t kReplacedLength = std::uintptr_t{1} << 20;

// A handler of signals reaches only what is there already.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
std::array<MappingGuard::Range, 256> ranges;
std::once_flag handlerIsInstalled;
struct sigaction formerAction = {};
std::uintptr_t pageMask = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

/// False where the system refuses. Other threads may read the same pages meanwhile: they see the file's or the zeros. ThreadSanitizer would take the call for writing beside their reading.
bool mapZeros(std::uintptr_t page, std::size_t length)
{
#ifdef TOLVGRAPHING_SANITIZES_THREADS
    AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
#endif
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    const bool isMapped = ::mmap(reinterpret_cast<void*>(page), length, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) != MAP_FAILED;
#ifdef TOLVGRAPHING_SANITIZES_THREADS
    AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
#endif
    return isMapped;
}

/// Puts zeros at the address and a little behind it where a range has it.
bool replaceLostPages(std::uintptr_t address)
{
    for (MappingGuard::Range& range : ranges) {
        const std::uintptr_t begin = range.begin.load(std::memory_order_acquire);
        const std::uintptr_t end = range.end.load(std::memory_order_acquire);
        if (begin == 0 || address < begin || address >= end)
            continue;
        const std::uintptr_t page = address & pageMask;
        const std::size_t length = std::min(end - page, kReplacedLength);
        // Told first: another thread may read the zeros as soon as they are there, and ask then.
        range.hasLostPages.store(true, std::memory_order_release);
        return mapZeros(page, length);
    }
    return false;
}

void passOn(int signal, siginfo_t* information, void* context)
{
    if ((formerAction.sa_flags & SA_SIGINFO) != 0 && formerAction.sa_sigaction) {
        formerAction.sa_sigaction(signal, information, context);
        return;
    }
    if (formerAction.sa_handler != SIG_DFL && formerAction.sa_handler != SIG_IGN) {
        formerAction.sa_handler(signal);
        return;
    }
    // What the system does usually: the access is tried once more, and the process ends.
    struct sigaction usual = {};
    usual.sa_handler = SIG_DFL;
    ::sigaction(SIGBUS, &usual, nullptr);
    if (information->si_code <= 0)
        static_cast<void>(::raise(signal));
}

void handleLostPage(int signal, siginfo_t* information, void* context)
{
    const int error = errno;
    const bool isLostPage = information->si_code == BUS_ADRERR && replaceLostPages(reinterpret_cast<std::uintptr_t>(information->si_addr));
    errno = error;
    if (!isLostPage)
        passOn(signal, information, context);
}

void installHandler()
{
    pageMask = ~(static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE)) - 1);
    struct sigaction action = {};
    action.sa_sigaction = handleLostPage;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(SIGBUS, &action, &formerAction);
}

} // namespace

MappingGuard::MappingGuard(const void* begin, std::size_t length)
{
    std::call_once(handlerIsInstalled, installHandler);
    for (Range& range : ranges) {
        if (range.isTaken.exchange(true, std::memory_order_acq_rel))
            continue;
        range.hasLostPages.store(false, std::memory_order_relaxed);
        range.end.store(reinterpret_cast<std::uintptr_t>(begin) + length, std::memory_order_release);
        range.begin.store(reinterpret_cast<std::uintptr_t>(begin), std::memory_order_release);
        m_range = &range;
        return;
    }
}

MappingGuard::~MappingGuard()
{
    if (!m_range)
        return;
    m_range->begin.store(0, std::memory_order_release);
    m_range->end.store(0, std::memory_order_release);
    m_range->isTaken.store(false, std::memory_order_release);
}

bool MappingGuard::hasLostPages() const
{
    return m_range && m_range->hasLostPages.load(std::memory_order_acquire);
}

} // namespace TOLVGraphing::input
