#include "FaultyPrintServer.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

namespace {

sockaddr_un addressOf(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path)
        throw std::runtime_error("too long for a socket: " + path);
    path.copy(address.sun_path, path.size());
    return address;
}

int newSocket()
{
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

bool sendAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

/// A program that prints and the server that it believes to talk to.
struct Conversation {
    int program = -1;
    int server = -1;

    void close()
    {
        ::close(program);
        if (server >= 0)
            ::close(server);
        program = server = -1;
    }
};

} // namespace

FaultyPrintServer::FaultyPrintServer(Fault fault, std::size_t passedBytes, const std::string& serverSocket)
    : m_fault(fault)
    , m_passedBytes(passedBytes)
    , m_serverSocket(serverSocket)
{
    const sockaddr_un address = addressOf(socket());
    const int listening = newSocket();
    if (::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 || ::listen(listening, 16) != 0 || ::pipe(m_end) != 0)
        throw std::runtime_error("cannot listen at " + socket());
    m_thread = std::thread([this, listening] { serve(listening); });
}

FaultyPrintServer::~FaultyPrintServer()
{
    ::close(m_end[1]);
    m_thread.join();
    ::close(m_end[0]);
}

void FaultyPrintServer::serve(int listening)
{
    std::vector<Conversation> conversations;
    const auto isFaulty = [this] { return m_heardBytes >= m_passedBytes; };
    bool hasEnded = false;
    while (!hasEnded) {
        std::vector<pollfd> waiting{{m_end[0], POLLIN, 0}, {listening, POLLIN, 0}};
        for (const Conversation& one : conversations) {
            waiting.push_back({one.program, POLLIN, 0});
            waiting.push_back({one.server, POLLIN, 0});
        }
        if (::poll(waiting.data(), waiting.size(), -1) < 0)
            continue;
        hasEnded = waiting[0].revents != 0;
        std::array<char, 4096> buffer{};
        for (std::size_t i = 0; i < conversations.size(); ++i) {
            Conversation& one = conversations[i];
            if (waiting[2 + 2 * i].revents != 0) {
                const ssize_t length = ::recv(one.program, buffer.data(), buffer.size(), 0);
                if (length <= 0) {
                    one.close();
                    continue;
                }
                m_heardBytes += static_cast<std::size_t>(length);
                if (!isFaulty() && !sendAll(one.server, {buffer.data(), static_cast<std::size_t>(length)}))
                    one.close();
            }
            if (one.server >= 0 && waiting[3 + 2 * i].revents != 0) {
                const ssize_t length = ::recv(one.server, buffer.data(), buffer.size(), 0);
                if (length <= 0)
                    one.close();
                else if (!isFaulty())
                    sendAll(one.program, {buffer.data(), static_cast<std::size_t>(length)});
            }
        }
        std::erase_if(conversations, [](const Conversation& one) { return one.program < 0; });
        if (waiting[1].revents != 0 && listening >= 0) {
            Conversation next{::accept(listening, nullptr, nullptr), -1};
            if (!isFaulty()) {
                const sockaddr_un address = addressOf(m_serverSocket);
                next.server = newSocket();
                if (::connect(next.server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
                    next.close();
            }
            if (next.program >= 0)
                conversations.push_back(next);
        }
        // One that passes nothing on disappears when it has heard something.
        if (m_fault == Fault::Disappears && isFaulty() && m_heardBytes > 0) {
            for (Conversation& one : conversations)
                one.close();
            conversations.clear();
            if (listening >= 0)
                ::close(std::exchange(listening, -1));
        }
    }
    for (Conversation& one : conversations)
        one.close();
    if (listening >= 0)
        ::close(listening);
}

} // namespace TOLVGraphing::testing_support
