#pragma once

#include "../output/OutputError.h"
#include "TOLVGraphing/views/TOLVPrintView.h"
#include <TOLVMath/Export.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

namespace TOLVGraphing {

/// The print server or one of its queues refused, or the server does not answer. `what()` reads "cannot print to QUEUE: REASON", or names what was asked where no queue was; the reason is the server's or the system's own text.
class TOLV_EXPORT PrintError : public std::runtime_error {
public:
    /// Of a queue's name, empty for none, and the whole message.
    PrintError(std::string queue, const std::string& message);

    /// The queue's name; empty where the error is about none.
    [[nodiscard]] const std::string& queue() const { return m_queue; }

private:
    std::string m_queue;
};

/// A queue of the print server. A value.
///
/// The server is the one that libcups finds: in CUPS_SERVER (a host, or the path of a socket), else in the user's and the system's client.conf, else on this machine. The functions below wait for it, at most `patience` for each answer, a millisecond at least; a
/// server that stops answering, or goes away, is an error then. They may be called from any thread, but for the view that is printed.
struct PrintQueue {
    /// The queue's name, and behind a '/' that of the user's own set of options where it is one: "office/draft".
    std::string name;
    /// What people call it; may be empty.
    std::string information;
    /// The one that the user, or else the server, prefers.
    bool isDefault = false;

    friend bool operator==(const PrintQueue&, const PrintQueue&) = default;
};

/// How long an answer of the print server is waited for unless a caller says otherwise: half a minute.
inline constexpr std::chrono::milliseconds kUsualPrintPatience{30000};

/// Throws PrintError where a server is there and does not answer: toolkits' dialogs would wait for it without an end. Nothing happens where none is, or where it answers whatever it will.
TOLV_EXPORT void requireAnsweringPrintServer(std::chrono::milliseconds patience = kUsualPrintPatience);

/// The queues that this user can print to, none without any. Throws PrintError, without a queue's name, where the server cannot be reached or does not answer.
[[nodiscard]] TOLV_EXPORT std::vector<PrintQueue> printQueues(std::chrono::milliseconds patience = kUsualPrintPatience);

/// Sends the page as PDF to a queue, of which the name counts alone, with the job's title, copies and paper of the view's PrintInfo, unscaled, and the options that the user has set for the queue. Answers the job's number on the server. Paper goes by its size, portrait or landscape, under the
/// name that the queue has for it, or as a custom size where it has none. Throws OutputError as `dataOfPage` does, and PrintError also for a queue that the server does not have and for less than one copy; no job is left behind then. The page
/// is laid out and drawn in the calling thread, which is the view's.
TOLV_EXPORT int printPage(TOLVPrintView& view, const PrintQueue& queue, std::chrono::milliseconds patience = kUsualPrintPatience);

} // namespace TOLVGraphing
