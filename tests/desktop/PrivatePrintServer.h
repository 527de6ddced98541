#pragma once

#include "TemporaryFolder.h"

#include <sys/types.h>

#include <chrono>
#include <string>

namespace TOLVGraphing::testing_support {

/// A print server (cupsd) of a test's own, as a process of its own: it listens at a socket in a temporary folder and at no network port, and knows nothing of the machine's printers. Printed jobs end in files.
///
/// Its queues: "plain", the default one, "A plain queue", which knows no paper; "papers", which knows A4 as "iso_a4_210x297mm" and Letter as "na_letter_8.5x11in"; and "closed", which takes no jobs.
class PrivatePrintServer {
public:
    /// Starts the server, with its queues or without any, and waits until it listens.
    explicit PrivatePrintServer(bool hasQueues = true);
    /// Ends the server.
    ~PrivatePrintServer();
    PrivatePrintServer(const PrivatePrintServer&) = delete;
    PrivatePrintServer& operator=(const PrivatePrintServer&) = delete;

    /// True when a server is installed.
    [[nodiscard]] static bool isInstalled();
    /// False when the server refused to start; `log` tells why then.
    [[nodiscard]] bool isRunning() const { return m_process > 0; }
    [[nodiscard]] std::string socket() const { return m_folder.path("socket"); }
    [[nodiscard]] std::string log() const;

    /// What was printed, or nothing when no job has been printed in that time.
    struct Printed {
        /// The name of the queue, the job's number, the user, the title, the copies and the options, one a line.
        std::string arguments;
        std::string document;
    };
    [[nodiscard]] Printed waitForPrinted(std::chrono::seconds patience = std::chrono::seconds(20)) const;

private:
    void writeFiles(bool hasQueues) const;
    void start();

    TemporaryFolder m_folder;
    pid_t m_process = -1;
};

} // namespace TOLVGraphing::testing_support
