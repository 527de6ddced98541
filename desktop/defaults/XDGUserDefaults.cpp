#include "XDGUserDefaults.h"

#include "../output/AtomicFile.h"
#include "TOLVGraphing/platform/foundation/Exception.h"
#include "TOLVGraphing/platform/foundation/Log.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <span>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr std::size_t kLongestFile = std::size_t{1} << 20U;
/// File systems tell times in steps: two changes within one of them look alike.
constexpr std::int64_t kLongestTimeStep = 2'000'000'000;

std::int64_t nanoseconds(const timespec& time)
{
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

std::filesystem::path homeFolder()
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here changes the environment.
    if (const char* home = std::getenv("HOME"); home && *home)
        return home;
    passwd user{};
    passwd* found = nullptr;
    std::array<char, std::size_t{1} << 14U> texts{};
    if (::getpwuid_r(::getuid(), &user, texts.data(), texts.size(), &found) != 0 || !found || !found->pw_dir)
        return {};
    return found->pw_dir;
}

bool isMade(const std::filesystem::path& folder)
{
    return folder.empty() || ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST;
}

/// Makes the folder of the file and those that hold it, each for the user only.
void makeFolder(const std::filesystem::path& folder, const std::filesystem::path& file)
{
    if (isMade(folder))
        return;
    if (errno == ENOENT) {
        makeFolder(folder.parent_path(), file);
        if (isMade(folder))
            return;
    }
    throw FileError(file.string(), "cannot be written, its folder " + folder.string() + " cannot be made", errno);
}

/// The bytes of an open file, and one block at most beyond the limit. Answers the system's error number, or 0.
int readAll(int descriptor, std::string& bytes)
{
    std::array<char, 4096> block{};
    while (bytes.size() <= kLongestFile) {
        const ssize_t length = ::read(descriptor, block.data(), block.size());
        if (length > 0)
            bytes.append(block.data(), static_cast<std::size_t>(length));
        else if (length == 0)
            return 0;
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

std::optional<std::int64_t> wholeNumber(const std::string& text)
{
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && parsed == end ? std::optional(number) : std::nullopt;
}

} // namespace

XDGUserDefaults::XDGUserDefaults(std::filesystem::path path) : m_path(std::move(path)) {}

XDGUserDefaults::~XDGUserDefaults() = default;

std::filesystem::path XDGUserDefaults::defaultPath()
{
    const char* configured = std::getenv("XDG_CONFIG_HOME"); // NOLINT(concurrency-mt-unsafe): nothing here changes the environment.
    const std::filesystem::path folder = configured && *configured == '/' ? std::filesystem::path(configured) : homeFolder() / ".config";
    return folder / "TOLVGraphing" / "settings.ini";
}

bool XDGUserDefaults::boolForKey(std::string_view key) const
{
    const std::string text = stringForKey(key);
    if (text == "true" || text == "yes")
        return true;
    if (text.empty() || text == "false" || text == "no")
        return false;
    const auto number = wholeNumber(text);
    if (!number)
        reportValue(key, text, "true or false");
    return number.value_or(0) != 0;
}

std::int64_t XDGUserDefaults::integerForKey(std::string_view key) const
{
    const std::string text = stringForKey(key);
    const auto number = wholeNumber(text);
    if (!number && !text.empty())
        reportValue(key, text, "a whole number");
    return number.value_or(0);
}

std::string XDGUserDefaults::stringForKey(std::string_view key) const
{
    readIfChanged();
    return m_settings.valueForKey(key).value_or(std::string());
}

void XDGUserDefaults::setBool(bool value, std::string_view key)
{
    setString(value ? "true" : "false", key);
}

void XDGUserDefaults::setInteger(std::int64_t value, std::string_view key)
{
    setString(std::to_string(value), key);
}

void XDGUserDefaults::setString(const std::string& value, std::string_view key)
{
    if (key.empty())
        throw Exception("EmptyKey", "A setting needs a name");
    makeFolder(m_path.parent_path(), m_path);
    defaults::SettingsText settings(contents());
    settings.setValue(value, key);
    const std::string text = settings.text();
    // It could not be read any more.
    if (text.size() > kLongestFile)
        throw FileError(m_path.string(), "cannot be written, settings have at most " + std::to_string(kLongestFile) + " bytes");
    writeFileAtomically(m_path, std::as_bytes(std::span(text)));
    // The next reading sees what the file has become.
    m_state.reset();
}

XDGUserDefaults::State XDGUserDefaults::stateOfFile(const std::filesystem::path& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {errno, 0, 0, 0, 0, 0};
    return {0, status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

std::string XDGUserDefaults::contents() const
{
    // A pipe would be waited for.
    const int descriptor = ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        if (errno == ENOENT)
            return {};
        throw FileError(m_path.string(), "cannot be read", errno);
    }
    std::string bytes;
    struct stat status {};
    const bool isFile = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    const int error = isFile ? readAll(descriptor, bytes) : 0;
    ::close(descriptor);
    if (!isFile)
        throw FileError(m_path.string(), "cannot be read, it is not a regular file");
    if (error != 0)
        throw FileError(m_path.string(), "cannot be read", error);
    if (bytes.size() > kLongestFile)
        throw FileError(m_path.string(), "cannot be read, settings have at most " + std::to_string(kLongestFile) + " bytes");
    return bytes;
}

void XDGUserDefaults::readIfChanged() const
{
    const State state = stateOfFile(m_path);
    if (m_state == state)
        return;
    const std::int64_t now = std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch()).count();
    try {
        defaults::SettingsText settings(contents());
        std::swap(m_settings, settings);
        // A file that was changed just now is read again next time; what was said of it holds.
        if (m_settings.text() != settings.text() || m_settings.problems() != settings.problems())
            m_reported.clear();
        reportProblems();
    } catch (const FileError& problem) {
        m_settings = defaults::SettingsText();
        if (m_reported.insert(problem.what()).second)
            writeLog(problem.what());
    }
    m_state = state;
    if (state.error == 0 && now - state.changed < kLongestTimeStep)
        m_state.reset();
}

void XDGUserDefaults::reportProblems() const
{
    const auto& problems = m_settings.problems();
    if (problems.empty())
        return;
    std::string message = m_path.string() + ":" + std::to_string(problems.front().line) + ": " + problems.front().message;
    if (problems.size() > 1)
        message += ", and likewise in " + std::to_string(problems.size() - 1) + " further lines";
    if (m_reported.insert(message).second)
        writeLog(message);
}

void XDGUserDefaults::reportValue(std::string_view key, const std::string& value, const std::string& expected) const
{
    const std::string message = m_path.string() + ":" + std::to_string(m_settings.lineOfKey(key)) + ": " + std::string(key) + " is \"" + value + "\", expected " + expected;
    if (m_reported.insert(message).second)
        writeLog(message);
}

void installDesktopUserDefaults()
{
    UserDefaults::setStandardUserDefaults(std::make_shared<XDGUserDefaults>());
}

} // namespace TOLVGraphing
