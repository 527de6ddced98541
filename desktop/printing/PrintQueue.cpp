#include "PrintQueue.h"

#include "PagePrinting.h"

#include <cups/cups.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

namespace TOLVGraphing {

namespace {

/// Seconds.
constexpr double kLaterPatience = 0.1;
/// The library counts paper in hundredths of millimetres.
constexpr double kPaperUnitsPerPoint = 2540.0 / 72.0;

struct CupsDeleter {
    void operator()(http_t* connection) const { httpClose(connection); }
    void operator()(cups_dest_t* destination) const { cupsFreeDests(1, destination); }
    void operator()(cups_dinfo_t* information) const { cupsFreeDestInfo(information); }
    void operator()(ipp_t* answer) const { ippDelete(answer); }
};
using Connection = std::unique_ptr<http_t, CupsDeleter>;
using Destination = std::unique_ptr<cups_dest_t, CupsDeleter>;
using DestinationInformation = std::unique_ptr<cups_dinfo_t, CupsDeleter>;
using Answer = std::unique_ptr<ipp_t, CupsDeleter>;

/// Options of a job, in the library's own array.
class Options {
public:
    Options() = default;
    ~Options() { cupsFreeOptions(m_count, m_options); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    void set(const char* name, const std::string& value) { m_count = cupsAddOption(name, value.c_str(), m_count, &m_options); }
    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] cups_option_t* array() const { return m_options; }

private:
    int m_count = 0;
    cups_option_t* m_options = nullptr;
};

bool isSuccess(ipp_status_t status)
{
    return status < IPP_STATUS_REDIRECTION_OTHER_SITE;
}

/// The library takes a patience that is not above zero for one without an end, or for no wish to connect.
int millisecondsOf(std::chrono::milliseconds patience)
{
    return static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(patience.count(), 1, std::numeric_limits<int>::max()));
}

/// The conversation with the print server.
class Server {
public:
    explicit Server(std::chrono::milliseconds patience)
        : m_connection(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, millisecondsOf(patience), nullptr))
    {
        if (m_connection)
            httpSetTimeout(m_connection.get(), millisecondsOf(patience) / 1000.0, &Server::answerInstead, this);
    }

    [[nodiscard]] http_t* connection() const { return m_connection.get(); }
    [[nodiscard]] bool hasStoppedAnswering() const { return m_hasStoppedAnswering; }
    /// Why the last request failed.
    [[nodiscard]] std::string reason() const
    {
        const std::string name = std::string("the print server ") + cupsServer();
        if (m_hasStoppedAnswering)
            return name + " does not answer";
        if (!m_connection)
            return name + " cannot be reached: " + cupsLastErrorString();
        return isSuccess(cupsLastError()) ? name + " has gone away" : std::string(cupsLastErrorString());
    }

private:
    /// The library asks a server that has stopped answering again and again, without an end. So somebody else answers on the connection: that the service is unavailable. Further requests are not waited for as long.
    static int answerInstead(http_t* connection, void* server)
    {
        static_cast<Server*>(server)->m_hasStoppedAnswering = true;
        httpSetTimeout(connection, kLaterPatience, &Server::answerInstead, server);
        static constexpr std::string_view kAnswer = "HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\n\r\n";
        std::array<int, 2> ends{};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
            return 0;
        const bool isAnswered
            = ::send(ends[1], kAnswer.data(), kAnswer.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(kAnswer.size()) && ::dup3(ends[0], httpGetFd(connection), O_CLOEXEC) >= 0;
        ::close(ends[0]);
        ::close(ends[1]);
        return isAnswered ? 1 : 0;
    }

    Connection m_connection;
    bool m_hasStoppedAnswering = false;
};

[[noreturn]] void failPrinting(const PrintQueue& queue, const std::string& reason)
{
    throw PrintError(queue.name, "cannot print to " + queue.name + ": " + reason);
}

/// The queues of the server, as the library lists them.
class Destinations {
public:
    explicit Destinations(const Server& server)
        : m_count(cupsGetDests2(server.connection(), &m_array))
        , m_hasFailed(server.hasStoppedAnswering() || (m_count == 0 && !isSuccess(cupsLastError()) && cupsLastError() != IPP_STATUS_ERROR_NOT_FOUND))
    {
    }
    ~Destinations() { cupsFreeDests(m_count, m_array); }
    Destinations(const Destinations&) = delete;
    Destinations& operator=(const Destinations&) = delete;

    [[nodiscard]] std::span<const cups_dest_t> all() const { return {m_array, static_cast<std::size_t>(m_count)}; }
    [[nodiscard]] cups_dest_t* named(const std::string& name, const char* instance) const { return cupsGetDest(name.c_str(), instance, m_count, m_array); }
    /// The list could not be had. A server without queues, which says that it has found none, has not failed.
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

private:
    cups_dest_t* m_array = nullptr;
    int m_count = 0;
    bool m_hasFailed = false;
};

/// The library's own search for one name would ask the server over a connection that waits without an end.
Destination destination(const Server& server, const PrintQueue& queue)
{
    const std::size_t slash = queue.name.find('/');
    const std::string name = queue.name.substr(0, slash);
    const std::string instance = slash == std::string::npos ? std::string() : queue.name.substr(slash + 1);
    const Destinations destinations(server);
    if (destinations.hasFailed())
        failPrinting(queue, server.reason());
    cups_dest_t* found = destinations.named(name, slash == std::string::npos ? nullptr : instance.c_str());
    if (!found)
        failPrinting(queue, "the print server has no such queue");
    cups_dest_t* copy = nullptr;
    cupsCopyDest(found, 0, &copy);
    return Destination(copy);
}

/// The name of the paper that the queue takes for the size. Sheets are named upright; the page's own shape says how it lies.
std::string paperName(http_t* server, cups_dest_t* queue, cups_dinfo_t* information, const Size& paper)
{
    const int width = static_cast<int>(std::lround(std::min(paper.width, paper.height) * kPaperUnitsPerPoint));
    const int length = static_cast<int>(std::lround(std::max(paper.width, paper.height) * kPaperUnitsPerPoint));
    cups_size_t size{};
    if (cupsGetDestMediaBySize(server, queue, information, width, length, CUPS_MEDIA_FLAGS_DEFAULT, &size) != 0)
        return size.media;
    std::array<char, 128> name{};
    pwgFormatSizeName(name.data(), name.size(), "custom", nullptr, width, length, "mm");
    return name.data();
}

/// The part of the queue's address that follows the server.
std::string resourceOf(const cups_dest_t& queue)
{
    const char* address = cupsGetOption("printer-uri-supported", queue.num_options, queue.options);
    std::array<char, 32> scheme{};
    std::array<char, 256> user{};
    std::array<char, 256> host{};
    std::array<char, 1024> resource{};
    int port = 0;
    const bool isKnown = address
        && httpSeparateURI(HTTP_URI_CODING_ALL, address, scheme.data(), static_cast<int>(scheme.size()), user.data(), static_cast<int>(user.size()), host.data(),
               static_cast<int>(host.size()), &port, resource.data(), static_cast<int>(resource.size()))
            >= HTTP_URI_STATUS_OK;
    return isKnown ? resource.data() : std::string("/printers/") + queue.name;
}

bool sendDocument(http_t* server, cups_dest_t* queue, cups_dinfo_t* information, int job, const std::string& title, std::span<const std::byte> document)
{
    const auto* bytes = reinterpret_cast<const char*>(document.data());
    if (cupsStartDestDocument(server, queue, information, job, title.c_str(), CUPS_FORMAT_PDF, 0, nullptr, 1) != HTTP_STATUS_CONTINUE
        || cupsWriteRequestData(server, bytes, document.size()) != HTTP_STATUS_CONTINUE)
        return false;
    // cupsFinishDestDocument would take no answer at all for a good one.
    const Answer answer(cupsGetResponse(server, resourceOf(*queue).c_str()));
    return answer && isSuccess(ippGetStatusCode(answer.get()));
}

} // namespace

PrintError::PrintError(std::string queue, const std::string& message) : std::runtime_error(message), m_queue(std::move(queue)) {}

void requireAnsweringPrintServer(std::chrono::milliseconds patience)
{
    const Server server(patience);
    if (!server.connection())
        return;
    const Destinations destinations(server);
    if (server.hasStoppedAnswering())
        throw PrintError({}, server.reason());
}

std::vector<PrintQueue> printQueues(std::chrono::milliseconds patience)
{
    const Server server(patience);
    if (!server.connection())
        throw PrintError({}, "cannot list the print queues: " + server.reason());
    const Destinations destinations(server);
    if (destinations.hasFailed())
        throw PrintError({}, "cannot list the print queues: " + server.reason());
    std::vector<PrintQueue> queues;
    for (const cups_dest_t& found : destinations.all()) {
        const char* information = cupsGetOption("printer-info", found.num_options, found.options);
        queues.push_back({found.name + (found.instance ? std::string("/") + found.instance : std::string()), information ? information : "", found.is_default != 0});
    }
    return queues;
}

int printPage(TOLVPrintView& view, const PrintQueue& queue, std::chrono::milliseconds patience)
{
    const PrintInfo& info = view.printInfo();
    if (info.copies < 1)
        failPrinting(queue, std::to_string(info.copies) + " copies were asked for, expected at least 1");
    const std::vector<std::byte> document = dataOfPage(view, OutputKind::PDF);
    const Server server(patience);
    if (!server.connection())
        failPrinting(queue, server.reason());
    const Destination to = destination(server, queue);
    const DestinationInformation information(cupsCopyDestInfo(server.connection(), to.get()));
    if (!information)
        failPrinting(queue, server.reason());
    Options options;
    for (const cups_option_t& own : std::span(to->options, static_cast<std::size_t>(to->num_options)))
        options.set(own.name, own.value);
    options.set("media", paperName(server.connection(), to.get(), information.get(), info.paperSize));
    options.set("copies", std::to_string(info.copies));
    // Otherwise the page would be made smaller to stay within what the printer can reach.
    options.set("print-scaling", "none");
    int job = 0;
    if (!isSuccess(cupsCreateDestJob(server.connection(), to.get(), information.get(), &job, info.jobTitle.c_str(), options.count(), options.array())) || job == 0)
        failPrinting(queue, server.reason());
    if (!sendDocument(server.connection(), to.get(), information.get(), job, info.jobTitle, document)) {
        const std::string reason = server.reason();
        cupsCancelDestJob(server.connection(), to.get(), job);
        failPrinting(queue, reason);
    }
    return job;
}

} // namespace TOLVGraphing
