#pragma once

#include "TemporaryFolder.h"

#include <atomic>
#include <cstddef>
#include <ostream>
#include <string>
#include <thread>

namespace TOLVGraphing::testing_support {

/// Stands before a print server, or before none, passes on what both sides say, and fails after so many bytes of the programs that print. It listens at a socket in a temporary folder.
class FaultyPrintServer {
public:
    enum class Fault {
        /// Takes everything and answers nothing any more.
        Hangs,
        /// Ends its connections and takes no others.
        Disappears,
    };

    /// The server behind it is the one at the socket; an empty name for none, then 0 bytes are passed on.
    FaultyPrintServer(Fault fault, std::size_t passedBytes, const std::string& serverSocket = std::string());
    ~FaultyPrintServer();
    FaultyPrintServer(const FaultyPrintServer&) = delete;
    FaultyPrintServer& operator=(const FaultyPrintServer&) = delete;

    [[nodiscard]] std::string socket() const { return m_folder.path("socket"); }
    /// What the programs have said so far, in bytes.
    [[nodiscard]] std::size_t heardBytes() const { return m_heardBytes; }

private:
    void serve(int listening);

    TemporaryFolder m_folder;
    Fault m_fault;
    std::size_t m_passedBytes;
    std::string m_serverSocket;
    std::atomic<std::size_t> m_heardBytes = 0;
    /// The thread ends when the other end is closed.
    int m_end[2] = {-1, -1};
    std::thread m_thread;
};

/// In the names of tests.
inline void PrintTo(FaultyPrintServer::Fault fault, std::ostream* stream)
{
    *stream << (fault == FaultyPrintServer::Fault::Hangs ? "Hangs" : "Disappears");
}

} // namespace TOLVGraphing::testing_support
