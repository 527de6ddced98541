#include "Process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace TOLVGraphing::testing_support {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void failSystemCall(const std::string& what)
{
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

/// An open file, closed with the object.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    void close()
    {
        if (m_number >= 0)
            ::close(std::exchange(m_number, -1));
    }

private:
    int m_number;
};

/// Two ends of a channel: this program's and the other one's.
struct Channel {
    Descriptor ours;
    Descriptor theirs;
};

Channel channelIntoChild()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        failSystemCall("pipe");
    return {Descriptor(ends[1]), Descriptor(ends[0])};
}

Channel channelFromChild()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        failSystemCall("pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

Channel terminalOfChild()
{
    Descriptor ours(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    std::array<char, 128> name{};
    if (!ours.isOpen() || ::grantpt(ours.number()) != 0 || ::unlockpt(ours.number()) != 0 || ::ptsname_r(ours.number(), name.data(), name.size()) != 0)
        failSystemCall("terminal");
    Descriptor theirs(::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!theirs.isOpen())
        failSystemCall("terminal");
    return {std::move(ours), std::move(theirs)};
}

Descriptor opened(const std::string& path, int flags)
{
    Descriptor descriptor(::open(path.c_str(), flags | O_CLOEXEC, 0666));
    if (!descriptor.isOpen())
        failSystemCall(path);
    return descriptor;
}

constexpr int kCannotPrepare = 126;
constexpr int kCannotStart = 127;
/// The user and group "nobody".
constexpr unsigned kNobody = 65534;

void requireInChild(bool success)
{
    if (!success)
        ::_exit(kCannotPrepare);
}

/// The part behind fork: never returns.
[[noreturn]] void becomeProgram(const std::vector<std::string>& arguments, const ProcessSurroundings& surroundings, const std::array<int, 3>& descriptors)
{
    for (int i = 0; i < 3; ++i)
        requireInChild(::dup2(descriptors[static_cast<std::size_t>(i)], i) == i);
    // A shell starts what runs in its background with some of them ignored.
    for (const int signal : {SIGPIPE, SIGHUP, SIGINT, SIGTERM})
        ::signal(signal, SIG_DFL);
    requireInChild(surroundings.folder.empty() || ::chdir(surroundings.folder.c_str()) == 0);
    if (surroundings.fileSizeLimit > 0) {
        const rlimit limit{surroundings.fileSizeLimit, surroundings.fileSizeLimit};
        ::signal(SIGXFSZ, SIG_IGN);
        requireInChild(::setrlimit(RLIMIT_FSIZE, &limit) == 0);
    }
    if (surroundings.withoutPrivileges && ::geteuid() == 0)
        requireInChild(::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
    std::vector<char*> pointers;
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    ::execvp(pointers.front(), pointers.data());
    ::_exit(kCannotStart);
}

/// One running program with the ends of its channels.
class Run {
public:
    Run(const std::vector<std::string>& arguments, const ProcessSurroundings& surroundings) : m_surroundings(surroundings), m_start(Clock::now())
    {
        Channel input;
        if (surroundings.input)
            input = channelIntoChild();
        else
            input.theirs = opened("/dev/null", O_RDONLY);
        Channel output;
        if (surroundings.outputFile.empty())
            output = channelFromChild();
        else
            output.theirs = opened(surroundings.outputFile, O_WRONLY | O_CREAT | O_TRUNC);
        Channel error = surroundings.errorIsTerminal ? terminalOfChild() : channelFromChild();
        m_child = ::fork();
        if (m_child < 0)
            failSystemCall("fork");
        if (m_child == 0)
            becomeProgram(arguments, surroundings, {input.theirs.number(), output.theirs.number(), error.theirs.number()});
        m_input = std::move(input.ours);
        m_output = std::move(output.ours);
        m_error = std::move(error.ours);
        if (m_input.isOpen())
            ::fcntl(m_input.number(), F_SETFL, O_NONBLOCK);
    }

    ProcessResult finish()
    {
        if (m_surroundings.whileRunning)
            m_surroundings.whileRunning(m_child);
        while (m_output.isOpen() || m_error.isOpen()) {
            if (Clock::now() - m_start > m_surroundings.timeout) {
                m_result.timedOut = true;
                ::kill(m_child, SIGKILL);
                break;
            }
            exchange();
        }
        m_input.close();
        int status = 0;
        while (::waitpid(m_child, &status, 0) < 0 && errno == EINTR) {}
        m_result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        m_result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        return m_result;
    }

private:
    void exchange()
    {
        const bool sends = m_input.isOpen() && Clock::now() - m_start >= m_surroundings.inputDelay;
        std::array<pollfd, 3> waiting{{{m_output.number(), POLLIN, 0}, {m_error.number(), POLLIN, 0}, {sends ? m_input.number() : -1, POLLOUT, 0}}};
        if (::poll(waiting.data(), waiting.size(), 50) < 0 && errno != EINTR)
            failSystemCall("poll");
        if (waiting[0].revents != 0)
            receive(m_output, m_result.output);
        if (waiting[1].revents != 0)
            receive(m_error, m_result.error);
        if (waiting[2].revents != 0)
            send();
    }

    static void receive(Descriptor& from, std::string& text)
    {
        std::array<char, 65536> buffer{};
        const ssize_t length = ::read(from.number(), buffer.data(), buffer.size());
        // A terminal that nobody has open any more answers EIO.
        if (length > 0)
            text.append(buffer.data(), static_cast<std::size_t>(length));
        else if (length == 0 || errno != EINTR)
            from.close();
    }

    void send()
    {
        const std::string& text = *m_surroundings.input;
        const ssize_t length = ::write(m_input.number(), text.data() + m_sent, text.size() - m_sent);
        if (length >= 0)
            m_sent += static_cast<std::size_t>(length);
        const bool mayGoOn = length >= 0 || errno == EINTR || errno == EAGAIN;
        if (!mayGoOn || m_sent == text.size())
            m_input.close();
    }

    const ProcessSurroundings& m_surroundings;
    Clock::time_point m_start;
    pid_t m_child = -1;
    Descriptor m_input;
    Descriptor m_output;
    Descriptor m_error;
    std::size_t m_sent = 0;
    ProcessResult m_result;
};

} // namespace

std::string ProcessResult::text() const
{
    std::string text = "status " + std::to_string(status);
    if (signal != 0)
        text += ", signal " + std::to_string(signal);
    if (timedOut)
        text += ", timed out";
    return text + "\nstandard output: " + output + "\nstandard error: " + error;
}

ProcessResult runProcess(const std::vector<std::string>& arguments, const ProcessSurroundings& surroundings)
{
    // A program that ends without reading its input must not end this one.
    ::signal(SIGPIPE, SIG_IGN);
    ProcessResult result = Run(arguments, surroundings).finish();
    if (result.status == kCannotPrepare || result.status == kCannotStart)
        throw std::runtime_error("cannot be started: " + arguments.front());
    return result;
}

bool hasProgram(const std::string& name)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (::access((folder + "/" + name).c_str(), X_OK) == 0)
            return true;
    }
    return false;
}

} // namespace TOLVGraphing::testing_support
