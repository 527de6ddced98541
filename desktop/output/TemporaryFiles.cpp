#include "TemporaryFiles.h"

#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstring>
#include <string>
#include <unistd.h>

namespace TOLVGraphing {

namespace {

constexpr int kMostNames = 64;

enum class PlaceState { Free, BeingFilled, Used };

/// A signal may come at any moment and in any thread: the handler finds finished names only, takes no lock and allocates nothing.
struct Place {
    std::atomic<PlaceState> state = PlaceState::Free;
    std::array<char, PATH_MAX> name{};
};
static_assert(std::atomic<PlaceState>::is_always_lock_free);

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::array<Place, kMostNames> places;

void removeFilesAndEnd(int signal)
{
    for (const Place& place : places) {
        if (place.state.load(std::memory_order_acquire) == PlaceState::Used)
            ::unlink(place.name.data());
    }
    // Its handler is the system's own again.
    static_cast<void>(::raise(signal));
}

} // namespace

void removeTemporaryFilesAtSignals()
{
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction former {};
        if (::sigaction(signal, nullptr, &former) != 0 || (former.sa_flags & SA_SIGINFO) != 0 || former.sa_handler != SIG_DFL)
            continue;
        struct sigaction action {};
        action.sa_handler = removeFilesAndEnd;
        action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
        ::sigemptyset(&action.sa_mask);
        ::sigaction(signal, &action, nullptr);
    }
}

namespace output {

TemporaryName::TemporaryName(const std::filesystem::path& path)
{
    const std::string& name = path.native();
    if (name.size() >= PATH_MAX)
        return;
    for (int i = 0; i < kMostNames; ++i) {
        Place& place = places[static_cast<std::size_t>(i)];
        PlaceState expected = PlaceState::Free;
        if (!place.state.compare_exchange_strong(expected, PlaceState::BeingFilled, std::memory_order_acquire))
            continue;
        std::memcpy(place.name.data(), name.c_str(), name.size() + 1);
        place.state.store(PlaceState::Used, std::memory_order_release);
        m_place = i;
        return;
    }
}

TemporaryName::~TemporaryName()
{
    if (m_place >= 0)
        places[static_cast<std::size_t>(m_place)].state.store(PlaceState::Free, std::memory_order_release);
}

} // namespace output

} // namespace TOLVGraphing
