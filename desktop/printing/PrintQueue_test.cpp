#include "PrintQueue.h"

#include "../text/PangoTextSystem.h"
#include "PagePrinting.h"
#include "TOLVGraphing/platform/foundation/Log.h"

#include <tests/desktop/ExampleView.h>
#include <tests/desktop/FaultyPrintServer.h>
#include <tests/desktop/PrivatePrintServer.h>
#include <tests/support/TextLines.h>

#include <cups/cups.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <limits>
#include <optional>

namespace TOLVGraphing {

void PrintTo(const PrintQueue& queue, std::ostream* stream)
{
    *stream << queue.name << " (" << queue.information << ")" << (queue.isDefault ? " default" : "");
}

namespace {

using namespace testing_support;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::UnorderedElementsAre;

/// Names the print server for the life of the object. The library looks at the environment once, so it is told to look again.
class ServerAddress {
public:
    explicit ServerAddress(const std::string& address)
    {
        if (const char* former = std::getenv("CUPS_SERVER"))
            m_former = former;
        ::setenv("CUPS_SERVER", address.c_str(), 1);
        cupsSetServer(nullptr);
    }
    ~ServerAddress()
    {
        if (m_former)
            ::setenv("CUPS_SERVER", m_former->c_str(), 1);
        else
            ::unsetenv("CUPS_SERVER");
        cupsSetServer(nullptr);
    }
    ServerAddress(const ServerAddress&) = delete;
    ServerAddress& operator=(const ServerAddress&) = delete;

private:
    std::optional<std::string> m_former;
};

PrintInfo infoWithPaper(const Size& paper)
{
    PrintInfo info;
    info.paperSize = paper;
    return info;
}

class PrintQueueTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!PrivatePrintServer::isInstalled())
            GTEST_SKIP() << "the print server cupsd is not installed";
        m_server = std::make_unique<PrivatePrintServer>();
        if (!m_server->isRunning())
            GTEST_SKIP() << "the print server cupsd refuses to run: " << m_server->log();
        m_address.emplace(m_server->socket());
    }

    /// Prints a page and answers the options that the printer was given.
    [[nodiscard]] std::string optionsOfPrinted(const PrintInfo& info, const std::string& queue) const
    {
        const int job = printPage(*examplePage(info), {queue, {}, false});
        const auto lines = linesOf(m_server->waitForPrinted().arguments);
        if (lines.size() < 6 || lines[1] != std::to_string(job)) {
            ADD_FAILURE() << m_server->log();
            return {};
        }
        return " " + lines[5] + " ";
    }

    TextSystemScope m_fonts{text::PangoTextSystem::shared()};
    LogSinkScope m_silence{[](std::string_view) {}};
    std::unique_ptr<PrivatePrintServer> m_server;
    std::optional<ServerAddress> m_address;
};

TEST_F(PrintQueueTest, QueuesAreListedWithTheDefaultOne)
{
    const std::vector<PrintQueue> queues = printQueues();
    EXPECT_THAT(
        queues, UnorderedElementsAre(PrintQueue{"plain", "A plain queue", true}, PrintQueue{"papers", "A queue with papers", false}, PrintQueue{"closed", "closed", false}));
}

TEST_F(PrintQueueTest, ThePrinterReceivesThePageAsPDF)
{
    PrintInfo info;
    info.jobTitle = "Überdruck";
    info.copies = 3;
    const auto page = examplePage(info);
    const int job = printPage(*page, {"plain", {}, false});
    const PrivatePrintServer::Printed printed = m_server->waitForPrinted();
    const auto expected = dataOfPage(*page, OutputKind::PDF);
    EXPECT_TRUE(printed.document == std::string(reinterpret_cast<const char*>(expected.data()), expected.size())) << printed.document.size() << " bytes\n" << m_server->log();
    const auto lines = linesOf(printed.arguments);
    ASSERT_EQ(lines.size(), 6U) << printed.arguments;
    EXPECT_EQ(lines[0], "plain");
    EXPECT_EQ(lines[1], std::to_string(job));
    EXPECT_EQ(lines[3], "Überdruck");
    EXPECT_EQ(lines[4], "3");
    EXPECT_THAT(lines[5], HasSubstr("print-scaling=none"));
}

TEST_F(PrintQueueTest, PaperGoesByTheNameThatTheQueueKnows)
{
    // 595 x 842 points are 209.90 x 297.04 mm.
    EXPECT_THAT(optionsOfPrinted(infoWithPaper({595.0, 842.0}), "papers"), HasSubstr(" media=iso_a4_210x297mm "));
}

TEST_F(PrintQueueTest, LandscapePaperIsTheSameSheet)
{
    EXPECT_THAT(optionsOfPrinted(infoWithPaper({792.0, 612.0}), "papers"), HasSubstr(" media=na_letter_8.5x11in "));
}

TEST_F(PrintQueueTest, OtherPaperIsACustomSize)
{
    // 288 x 432 points are 101.6 x 152.4 mm.
    EXPECT_THAT(optionsOfPrinted(infoWithPaper({432.0, 288.0}), "plain"), HasSubstr(" media=custom_101.6x152.4mm_101.6x152.4mm "));
}

TEST_F(PrintQueueTest, RefusalsNameTheQueueAndTheServersReason)
{
    struct Case {
        const char* queue;
        int copies;
        const char* message;
    };
    const Case cases[] = {
        {"missing", 1, "cannot print to missing: the print server has no such queue"},
        {"closed", 1, "cannot print to closed: Destination \"closed\" is not accepting jobs."},
        {"plain", 0, "cannot print to plain: 0 copies were asked for, expected at least 1"},
    };
    for (const Case& test : cases) {
        PrintInfo info;
        info.copies = test.copies;
        try {
            printPage(*examplePage(info), {test.queue, {}, false});
            ADD_FAILURE() << "no error: " << test.message;
        } catch (const PrintError& error) {
            EXPECT_EQ(error.queue(), test.queue);
            EXPECT_STREQ(error.what(), test.message);
        }
    }
}

TEST_F(PrintQueueTest, APageThatCannotBeMadeIsNotSent)
{
    PrintInfo info;
    info.leftMargin = 600.0;
    EXPECT_THROW(printPage(*examplePage(info), {"plain", {}, false}), OutputError);
    EXPECT_EQ(printPage(*examplePage(PrintInfo()), {"plain", {}, false}), 1) << "the first job of the server";
}

TEST(PrintQueueWithoutServer, ErrorsNameTheServer)
{
    const LogSinkScope silence([](std::string_view) {});
    const TemporaryFolder folder;
    const std::string socket = folder.path("socket");
    const ServerAddress address(socket);
    try {
        static_cast<void>(printQueues());
        ADD_FAILURE() << "no error";
    } catch (const PrintError& error) {
        EXPECT_EQ(error.queue(), "");
        EXPECT_THAT(error.what(), MatchesRegex("cannot list the print queues: the print server " + socket + " cannot be reached: .+"));
    }
    try {
        printPage(*examplePage(PrintInfo()), {"plain", {}, false});
        ADD_FAILURE() << "no error";
    } catch (const PrintError& error) {
        EXPECT_EQ(error.queue(), "plain");
        EXPECT_THAT(error.what(), MatchesRegex("cannot print to plain: the print server " + socket + " cannot be reached: .+"));
    }
}

/// What a failed action says.
template <typename Action>
std::string errorOf(Action action)
{
    try {
        action();
        return "no error";
    } catch (const PrintError& error) {
        return error.what();
    }
}

constexpr std::chrono::milliseconds kShortPatience{300};

TEST(PrintQueueWithoutQueues, ListsNoneAndPrintsNothing)
{
    if (!PrivatePrintServer::isInstalled())
        GTEST_SKIP() << "the print server cupsd is not installed";
    const LogSinkScope silence([](std::string_view) {});
    const PrivatePrintServer server(false);
    if (!server.isRunning())
        GTEST_SKIP() << "the print server cupsd refuses to run: " << server.log();
    const ServerAddress address(server.socket());
    EXPECT_THAT(printQueues(), testing::IsEmpty());
    EXPECT_EQ(errorOf([] { printPage(*examplePage(PrintInfo()), {"plain", {}, false}); }), "cannot print to plain: the print server has no such queue");
}

class FaultyServer : public testing::TestWithParam<FaultyPrintServer::Fault> {
protected:
    TextSystemScope m_fonts{text::PangoTextSystem::shared()};
    LogSinkScope m_silence{[](std::string_view) {}};
};

/// The library's own words for a server that has gone away depend on what it was doing.
std::string reasonOf(FaultyPrintServer::Fault fault, const FaultyPrintServer& server)
{
    return fault == FaultyPrintServer::Fault::Hangs ? "the print server " + server.socket() + " does not answer" : ".+";
}

TEST_P(FaultyServer, CannotTellItsQueues)
{
    const FaultyPrintServer server(GetParam(), 0);
    const ServerAddress address(server.socket());
    EXPECT_THAT(errorOf([] { static_cast<void>(printQueues(kShortPatience)); }), MatchesRegex("cannot list the print queues: " + reasonOf(GetParam(), server)));
    EXPECT_GT(server.heardBytes(), 0U);
}

TEST(PrintServerThatIsAsked, HasToAnswerWhereItIsThere)
{
    {
        const FaultyPrintServer server(FaultyPrintServer::Fault::Hangs, 0);
        const ServerAddress address(server.socket());
        EXPECT_EQ(errorOf([] { requireAnsweringPrintServer(kShortPatience); }), "the print server " + server.socket() + " does not answer");
    }
    const FaultyPrintServer server(FaultyPrintServer::Fault::Disappears, 0);
    const ServerAddress address(server.socket());
    EXPECT_EQ(errorOf([] { requireAnsweringPrintServer(kShortPatience); }), "no error");
    EXPECT_EQ(errorOf([] { requireAnsweringPrintServer(kShortPatience); }), "no error") << "nothing listens any more";
}

TEST(PrintServerThatIsAsked, IsWaitedForAMillisecondAtLeastAndNeverWithoutAnEnd)
{
    const FaultyPrintServer server(FaultyPrintServer::Fault::Hangs, 0);
    const ServerAddress address(server.socket());
    for (const int milliseconds : {0, -1, std::numeric_limits<int>::min()})
        EXPECT_EQ(errorOf([&] { requireAnsweringPrintServer(std::chrono::milliseconds(milliseconds)); }), "the print server " + server.socket() + " does not answer")
            << milliseconds;
}

TEST_P(FaultyServer, CannotPrint)
{
    const FaultyPrintServer server(GetParam(), 0);
    const ServerAddress address(server.socket());
    EXPECT_THAT(errorOf([] {
        printPage(*examplePage(PrintInfo()), {"plain", {}, false}, kShortPatience);
    }),
        MatchesRegex("cannot print to plain: " + reasonOf(GetParam(), server)));
    EXPECT_GT(server.heardBytes(), 0U);
}

TEST_P(FaultyServer, InTheMiddleOfAJobIsAnError)
{
    if (!PrivatePrintServer::isInstalled())
        GTEST_SKIP() << "the print server cupsd is not installed";
    const PrivatePrintServer server;
    if (!server.isRunning())
        GTEST_SKIP() << "the print server cupsd refuses to run: " << server.log();
    const auto page = examplePage(PrintInfo());
    std::size_t wholeJob = 0;
    {
        const FaultyPrintServer relay(GetParam(), std::size_t{1} << 30U, server.socket());
        const ServerAddress address(relay.socket());
        ASSERT_EQ(printPage(*page, {"plain", {}, false}), 1);
        wholeJob = relay.heardBytes();
    }
    const std::size_t document = dataOfPage(*page, OutputKind::PDF).size();
    ASSERT_GT(wholeJob, document);
    // With the first request, with the next ones, and in the middle of the document, which comes last.
    for (const std::size_t heard : {std::size_t{1}, (wholeJob - document) / 2, wholeJob - document / 2}) {
        const FaultyPrintServer relay(GetParam(), heard, server.socket());
        const ServerAddress address(relay.socket());
        const std::string error = errorOf([&] { printPage(*page, {"plain", {}, false}, kShortPatience); });
        EXPECT_THAT(error, MatchesRegex("cannot print to plain: " + reasonOf(GetParam(), relay))) << heard;
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyServer, testing::Values(FaultyPrintServer::Fault::Hangs, FaultyPrintServer::Fault::Disappears), testing::PrintToStringParamName());

} // namespace
} // namespace TOLVGraphing
