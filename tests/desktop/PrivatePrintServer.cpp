#include "PrivatePrintServer.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <thread>

namespace TOLVGraphing::testing_support {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr const char* kServer = "/usr/sbin/cupsd";
constexpr auto kStartPatience = 10s;
constexpr auto kPause = 10ms;

constexpr const char* kSettings = R"(LogLevel warn
Listen FOLDER/socket
Browsing No
WebInterface No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  JobPrivateAccess all
  JobPrivateValues none
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
)";

constexpr const char* kFolders = R"(ServerRoot FOLDER/root
CacheDir FOLDER/cache
StateDir FOLDER/state
RequestRoot FOLDER/spool
TempDir FOLDER/spool/tmp
ServerBin FOLDER/bin
AccessLog FOLDER/access-log
ErrorLog FOLDER/error-log
PageLog FOLDER/page-log
)";

constexpr const char* kQueues = R"(<DefaultPrinter plain>
Info A plain queue
DeviceURI keep:/
State Idle
Accepting Yes
ErrorPolicy abort-job
</DefaultPrinter>
<Printer papers>
Info A queue with papers
DeviceURI keep:/
State Idle
Accepting Yes
ErrorPolicy abort-job
</Printer>
<Printer closed>
DeviceURI keep:/
State Idle
Accepting No
</Printer>
)";

/// What the queue with papers can do. PDF passes through unchanged.
constexpr const char* kPapers = R"papers(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "PAPERS.PPD"
*Product: "(Papers)"
*Manufacturer: "Test"
*ModelName: "Papers"
*ShortNickName: "Papers"
*NickName: "Papers"
*PSVersion: "(3010) 0"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*FileSystem: False
*cupsFilter2: "application/pdf application/pdf 0 -"
*OpenUI *PageSize/Media Size: PickOne
*DefaultPageSize: A4
*PageSize A4/A4: "<</PageSize[595 842]>>setpagedevice"
*PageSize Letter/Letter: "<</PageSize[612 792]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion/Media Size: PickOne
*DefaultPageRegion: A4
*PageRegion A4/A4: "<</PageSize[595 842]>>setpagedevice"
*PageRegion Letter/Letter: "<</PageSize[612 792]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "12 12 583 830"
*ImageableArea Letter/Letter: "12 12 600 780"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
*PaperDimension Letter/Letter: "612 792"
)papers";

/// Takes the place of a printer. Called without arguments it would list devices; with them it has the job's document as its last argument or on standard input. The document comes first, so that a file of arguments tells of a whole one.
constexpr const char* kPrinter = R"(#!/bin/sh
if [ $# -eq 0 ]; then exit 0; fi
cat "${6:--}" >FOLDER/document
printf '%s\n' "$PRINTER" "$1" "$2" "$3" "$4" "$5" >FOLDER/arguments.new
mv FOLDER/arguments.new FOLDER/arguments
)";

std::string inFolder(std::string text, const std::string& folder)
{
    static const std::string word = "FOLDER";
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + folder.size()))
        text.replace(at, word.size(), folder);
    return text;
}

bool listens(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path)
        return false;
    path.copy(address.sun_path, path.size());
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isThere = ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(descriptor);
    return isThere;
}

} // namespace

bool PrivatePrintServer::isInstalled()
{
    return ::access(kServer, X_OK) == 0;
}

PrivatePrintServer::PrivatePrintServer(bool hasQueues)
{
    writeFiles(hasQueues);
    start();
}

PrivatePrintServer::~PrivatePrintServer()
{
    if (m_process <= 0)
        return;
    ::kill(m_process, SIGTERM);
    while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {}
}

void PrivatePrintServer::writeFiles(bool hasQueues) const
{
    for (const char* folder : {"root/ppd", "cache", "state", "spool/tmp", "bin/backend", "bin/filter"})
        std::filesystem::create_directories(m_folder.path(folder));
    // The server starts its programs through one that it brings along.
    std::filesystem::create_directory_symlink("/usr/lib/cups/daemon", m_folder.path("bin/daemon"));
    m_folder.write("settings.conf", inFolder(kSettings, m_folder.path()));
    m_folder.write("folders.conf", inFolder(kFolders, m_folder.path()));
    m_folder.write("root/printers.conf", hasQueues ? kQueues : "");
    m_folder.write("root/ppd/papers.ppd", kPapers);
    // Not for others: the server then runs it as its own user, who may write into the folder.
    ::chmod(m_folder.write("bin/backend/keep", inFolder(kPrinter, m_folder.path())).c_str(), 0700);
}

void PrivatePrintServer::start()
{
    std::array<std::string, 6> arguments{kServer, "-f", "-c", m_folder.path("settings.conf"), "-s", m_folder.path("folders.conf")};
    std::array<char*, 7> pointers{};
    std::transform(arguments.begin(), arguments.end(), pointers.begin(), [](std::string& argument) { return argument.data(); });
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, m_folder.path("output").c_str(), O_WRONLY | O_CREAT, 0666);
    ::posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    const int error = ::posix_spawn(&m_process, kServer, &files, nullptr, pointers.data(), environ);
    ::posix_spawn_file_actions_destroy(&files);
    if (error != 0)
        m_process = -1;
    const auto end = Clock::now() + kStartPatience;
    while (m_process > 0 && !listens(socket())) {
        if (::waitpid(m_process, nullptr, WNOHANG) == m_process) {
            m_process = -1;
        } else if (Clock::now() > end) {
            ::kill(m_process, SIGKILL);
            ::waitpid(m_process, nullptr, 0);
            m_process = -1;
        }
        std::this_thread::sleep_for(kPause);
    }
}

std::string PrivatePrintServer::log() const
{
    return m_folder.read("output") + m_folder.read("error-log");
}

PrivatePrintServer::Printed PrivatePrintServer::waitForPrinted(std::chrono::seconds patience) const
{
    const auto end = Clock::now() + patience;
    while (!std::filesystem::exists(m_folder.path("arguments"))) {
        if (Clock::now() > end)
            return {};
        std::this_thread::sleep_for(kPause);
    }
    return {m_folder.read("arguments"), m_folder.read("document")};
}

} // namespace TOLVGraphing::testing_support
