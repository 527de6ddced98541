#include "PrintQueue.h"

#include "PagePrinting.h"

#include <cups/cups.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <span>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr int kPatienceInMilliseconds = 30000;
/// The library counts paper in hundredths of millimetres.
constexpr double kPaperUnitsPerPoint = 2540.0 / 72.0;

struct CupsDeleter {
    void operator()(http_t* connection) const { httpClose(connection); }
    void operator()(cups_dest_t* destination) const { cupsFreeDests(1, destination); }
    void operator()(cups_dinfo_t* information) const { cupsFreeDestInfo(information); }
};
using Connection = std::unique_ptr<http_t, CupsDeleter>;
using Destination = std::unique_ptr<cups_dest_t, CupsDeleter>;
using DestinationInformation = std::unique_ptr<cups_dinfo_t, CupsDeleter>;

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

[[noreturn]] void failPrinting(const PrintQueue& queue, const std::string& reason)
{
    throw PrintError(queue.name, "cannot print to " + queue.name + ": " + reason);
}

[[noreturn]] void failByServer(const PrintQueue& queue)
{
    failPrinting(queue, cupsLastErrorString());
}

/// Empty where the server cannot be reached; the library knows why.
Connection connection()
{
    Connection server(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, kPatienceInMilliseconds, nullptr));
    // A server that stops answering is given up.
    if (server)
        httpSetTimeout(server.get(), kPatienceInMilliseconds / 1000.0, [](http_t*, void*) { return 0; }, nullptr);
    return server;
}

std::string unreachable()
{
    return std::string("the print server ") + cupsServer() + " cannot be reached: " + cupsLastErrorString();
}

Destination destination(http_t* server, const PrintQueue& queue)
{
    const std::size_t slash = queue.name.find('/');
    const std::string name = queue.name.substr(0, slash);
    const std::string instance = slash == std::string::npos ? std::string() : queue.name.substr(slash + 1);
    Destination found(cupsGetNamedDest(server, name.c_str(), slash == std::string::npos ? nullptr : instance.c_str()));
    if (!found)
        failByServer(queue);
    return found;
}

/// The name of the paper that the queue takes for the size. Sheets are named upright; the page's own shape says how it lies.
std::string paperName(http_t* server, cups_dest_t* queue, const Size& paper)
{
    const int width = static_cast<int>(std::lround(std::min(paper.width, paper.height) * kPaperUnitsPerPoint));
    const int length = static_cast<int>(std::lround(std::max(paper.width, paper.height) * kPaperUnitsPerPoint));
    const DestinationInformation information(cupsCopyDestInfo(server, queue));
    cups_size_t size{};
    if (information && cupsGetDestMediaBySize(server, queue, information.get(), width, length, CUPS_MEDIA_FLAGS_DEFAULT, &size) != 0)
        return size.media;
    std::array<char, 128> name{};
    pwgFormatSizeName(name.data(), name.size(), "custom", nullptr, width, length, "mm");
    return name.data();
}

void sendDocument(http_t* server, const PrintQueue& queue, cups_dest_t* to, int job, const PrintInfo& info, std::span<const std::byte> document)
{
    const auto* bytes = reinterpret_cast<const char*>(document.data());
    const bool isSent = cupsStartDocument(server, to->name, job, info.jobTitle.c_str(), CUPS_FORMAT_PDF, 1) == HTTP_STATUS_CONTINUE
        && cupsWriteRequestData(server, bytes, document.size()) == HTTP_STATUS_CONTINUE && isSuccess(cupsFinishDocument(server, to->name));
    if (isSent)
        return;
    const std::string reason = cupsLastErrorString();
    cupsCancelJob2(server, to->name, job, 0);
    failPrinting(queue, reason);
}

} // namespace

PrintError::PrintError(std::string queue, const std::string& message)
    : std::runtime_error(message)
    , m_queue(std::move(queue))
{
}

std::vector<PrintQueue> printQueues()
{
    const Connection server = connection();
    if (!server)
        throw PrintError({}, "cannot list the print queues: " + unreachable());
    cups_dest_t* array = nullptr;
    const int count = cupsGetDests2(server.get(), &array);
    const bool hasFailed = count == 0 && !isSuccess(cupsLastError()) && cupsLastError() != IPP_STATUS_ERROR_NOT_FOUND;
    std::vector<PrintQueue> queues;
    for (const cups_dest_t& found : std::span(array, static_cast<std::size_t>(count))) {
        const char* information = cupsGetOption("printer-info", found.num_options, found.options);
        queues.push_back({found.name + (found.instance ? std::string("/") + found.instance : std::string()), information ? information : "", found.is_default != 0});
    }
    cupsFreeDests(count, array);
    if (hasFailed)
        throw PrintError({}, std::string("cannot list the print queues: ") + cupsLastErrorString());
    return queues;
}

int printPage(TOLVPrintView& view, const PrintQueue& queue)
{
    const PrintInfo& info = view.printInfo();
    if (info.copies < 1)
        failPrinting(queue, std::to_string(info.copies) + " copies were asked for, expected at least 1");
    const std::vector<std::byte> document = dataOfPage(view, OutputKind::PDF);
    const Connection server = connection();
    if (!server)
        failPrinting(queue, unreachable());
    const Destination to = destination(server.get(), queue);
    Options options;
    for (const cups_option_t& own : std::span(to->options, static_cast<std::size_t>(to->num_options)))
        options.set(own.name, own.value);
    options.set("media", paperName(server.get(), to.get(), info.paperSize));
    options.set("copies", std::to_string(info.copies));
    // Otherwise the page would be made smaller to stay within what the printer can reach.
    options.set("print-scaling", "none");
    const int job = cupsCreateJob(server.get(), to->name, info.jobTitle.c_str(), options.count(), options.array());
    if (job == 0)
        failByServer(queue);
    sendDocument(server.get(), queue, to.get(), job, info, document);
    return job;
}

} // namespace TOLVGraphing
