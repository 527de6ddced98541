#include "XDGUserDefaults.h"

#include "TOLVGraphing/platform/foundation/Exception.h"
#include "TOLVGraphing/platform/foundation/Log.h"

#include <tests/desktop/TemporaryFolder.h>
#include <tests/support/FileSizeLimit.h>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <limits>

namespace TOLVGraphing {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Sets an environment variable, or removes it, for the life of the object.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const char* value) : m_name(name)
    {
        if (const char* former = std::getenv(name))
            m_former = former;
        set(value);
    }
    ~EnvironmentVariable() { set(m_former ? m_former->c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void set(const char* value) const
    {
        if (value)
            ::setenv(m_name, value, 1);
        else
            ::unsetenv(m_name);
    }

    const char* m_name;
    std::optional<std::string> m_former;
};

class XDGUserDefaultsTest : public testing::Test {
protected:
    void put(std::string_view text) const { m_folder.write("settings.ini", text); }
    [[nodiscard]] std::string written() const { return m_folder.read("settings.ini"); }
    [[nodiscard]] std::string path() const { return m_folder.path("settings.ini"); }

    testing_support::TemporaryFolder m_folder;
    XDGUserDefaults m_defaults{m_folder.path("settings.ini")};
    std::vector<std::string> m_log;
    LogSinkScope m_sink{[this](std::string_view line) { m_log.emplace_back(line); }};
};

template <typename Action>
std::string errorOf(Action action)
{
    try {
        action();
        return "no error";
    } catch (const FileError& error) {
        return error.what();
    }
}

TEST_F(XDGUserDefaultsTest, AMissingFileHasNoSettings)
{
    EXPECT_FALSE(m_defaults.boolForKey("key"));
    EXPECT_EQ(m_defaults.integerForKey("key"), 0);
    EXPECT_EQ(m_defaults.stringForKey("key"), "");
    EXPECT_THAT(m_log, IsEmpty());
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(XDGUserDefaultsTest, ReadsWhatThePersonWrote)
{
    struct Case {
        const char* text;
        bool truth;
        std::int64_t number;
        std::vector<std::string> log;
    };
    const std::string place = path() + ":2: key is ";
    const Case cases[] = {
        {"true", true, 0, {place + "\"true\", expected a whole number"}},
        {"yes", true, 0, {place + "\"yes\", expected a whole number"}},
        {"false", false, 0, {place + "\"false\", expected a whole number"}},
        {"1", true, 1, {}},
        {"-612", true, -612, {}},
        {"0", false, 0, {}},
        {"", false, 0, {}},
        {"9223372036854775807", true, std::numeric_limits<std::int64_t>::max(), {}},
        {"9223372036854775808", false, 0, {place + "\"9223372036854775808\", expected true or false", place + "\"9223372036854775808\", expected a whole number"}},
        {"612.5", false, 0, {place + "\"612.5\", expected true or false", place + "\"612.5\", expected a whole number"}},
    };
    for (const Case& test : cases) {
        m_log.clear();
        put(std::string("[General]\nkey=") + test.text + "\n");
        EXPECT_EQ(m_defaults.boolForKey("key"), test.truth) << test.text;
        EXPECT_EQ(m_defaults.integerForKey("key"), test.number) << test.text;
        EXPECT_EQ(m_defaults.stringForKey("key"), test.text);
        EXPECT_EQ(m_log, test.log);
    }
}

TEST_F(XDGUserDefaultsTest, SettersWriteAtOnce)
{
    m_defaults.setBool(true, "TOLVPlot_UsesFixedCopySize");
    EXPECT_EQ(written(), "[General]\nTOLVPlot_UsesFixedCopySize=true\n");
    m_defaults.setInteger(612, "TOLVPlot_FixedCopyWidth");
    m_defaults.setString("a; b", "name");
    m_defaults.setBool(false, "TOLVPlot_UsesFixedCopySize");
    EXPECT_EQ(written(), "[General]\nTOLVPlot_UsesFixedCopySize=false\nTOLVPlot_FixedCopyWidth=612\nname=\"a; b\"\n");
    EXPECT_EQ(m_defaults.integerForKey("TOLVPlot_FixedCopyWidth"), 612);
    EXPECT_EQ(m_defaults.stringForKey("name"), "a; b");
    EXPECT_THAT(m_folder.names(), ElementsAre("settings.ini"));
}

TEST_F(XDGUserDefaultsTest, AnotherProcessesValuesAreSeenAndKept)
{
    XDGUserDefaults other(path());
    m_defaults.setInteger(1, "mine");
    EXPECT_EQ(other.integerForKey("mine"), 1);
    other.setInteger(2, "mine");
    other.setInteger(3, "others");
    EXPECT_EQ(m_defaults.integerForKey("mine"), 2);
    m_defaults.setInteger(4, "mine");
    EXPECT_EQ(written(), "[General]\nmine=4\nothers=3\n");
    // Written in place within the step of the clock, the same length: told apart all the same.
    put("[General]\nmine=7\nothers=3\n");
    EXPECT_EQ(m_defaults.integerForKey("mine"), 7);
    put("[General]\nmine=8\nothers=3\n");
    EXPECT_EQ(m_defaults.integerForKey("mine"), 8);
    ASSERT_EQ(::unlink(path().c_str()), 0);
    EXPECT_EQ(m_defaults.integerForKey("mine"), 0);
}

TEST_F(XDGUserDefaultsTest, ALineThatIsNotUnderstoodIsLoggedOnceAndKept)
{
    put("[General]\nkey=1\nwhat is this\n\n[Window]\ngeometry\n");
    EXPECT_EQ(m_defaults.integerForKey("key"), 1);
    EXPECT_EQ(m_defaults.integerForKey("key"), 1);
    EXPECT_THAT(m_log, ElementsAre(path() + ":3: expected key=value"));
    m_defaults.setInteger(2, "key");
    EXPECT_EQ(written(), "[General]\nkey=2\nwhat is this\n\n[Window]\ngeometry\n");
    put("[General]\none\ntwo\nthree\nkey=1\n");
    EXPECT_EQ(m_defaults.integerForKey("key"), 1);
    EXPECT_EQ(m_log.back(), path() + ":2: expected key=value, and likewise in 2 further lines");
}

TEST_F(XDGUserDefaultsTest, WhatCannotBeReadHasNoSettingsAndIsNotOverwritten)
{
    struct Case {
        std::string path;
        std::string message;
    };
    ASSERT_EQ(::mkdir(m_folder.path("folder").c_str(), 0777), 0);
    ASSERT_EQ(::mkfifo(m_folder.path("pipe").c_str(), 0666), 0);
    m_folder.write("large", std::string(1048577, '\n'));
    const Case cases[] = {
        {m_folder.path("folder"), m_folder.path("folder") + ": cannot be read, it is not a regular file"},
        {m_folder.path("pipe"), m_folder.path("pipe") + ": cannot be read, it is not a regular file"},
        {m_folder.path("large"), m_folder.path("large") + ": cannot be read, settings have at most 1048576 bytes"},
    };
    for (const Case& test : cases) {
        m_log.clear();
        XDGUserDefaults defaults(test.path);
        EXPECT_EQ(defaults.stringForKey("key"), "");
        EXPECT_FALSE(defaults.boolForKey("key"));
        EXPECT_THAT(m_log, ElementsAre(test.message));
        EXPECT_EQ(errorOf([&] { defaults.setBool(true, "key"); }), test.message);
    }
    EXPECT_EQ(m_folder.read("large").size(), 1048577U);
    EXPECT_THAT(m_folder.names(), ElementsAre("folder", "large", "pipe"));
}

TEST_F(XDGUserDefaultsTest, SettersTellWhyTheyCannotWrite)
{
    const std::string file = m_folder.write("file", "");
    XDGUserDefaults behindFile(file + "/deep/settings.ini");
    EXPECT_EQ(errorOf([&] { behindFile.setBool(true, "key"); }), file + "/deep/settings.ini: cannot be written, its folder " + file + "/deep cannot be made: Not a directory");
    XDGUserDefaults inFile(file + "/settings.ini");
    EXPECT_EQ(errorOf([&] { inFile.setBool(true, "key"); }), file + "/settings.ini: cannot be read: Not a directory");
    EXPECT_FALSE(inFile.boolForKey("key"));
}

TEST_F(XDGUserDefaultsTest, AFullDiskLeavesTheSettings)
{
    put("[General]\nkey=7\n");
    {
        const testing_support::FileSizeLimit limit(10);
        EXPECT_EQ(errorOf([&] { m_defaults.setInteger(8, "key"); }), path() + ": cannot be written: File too large");
        EXPECT_EQ(m_defaults.integerForKey("key"), 7);
    }
    EXPECT_EQ(written(), "[General]\nkey=7\n");
    EXPECT_THAT(m_folder.names(), ElementsAre("settings.ini"));
    m_defaults.setInteger(8, "key");
    EXPECT_EQ(m_defaults.integerForKey("key"), 8);
}

TEST_F(XDGUserDefaultsTest, WhatCouldNotBeReadAnyMoreIsNotWritten)
{
    // "[General]\nkey=" and a newline behind the value are 15 bytes.
    m_defaults.setString(std::string(1048576 - 15, 'x'), "key");
    EXPECT_EQ(m_defaults.stringForKey("key").size(), 1048576U - 15U);
    EXPECT_EQ(errorOf([&] { m_defaults.setString(std::string(1048576 - 14, 'y'), "key"); }), path() + ": cannot be written, settings have at most 1048576 bytes");
    EXPECT_EQ(m_defaults.stringForKey("key"), std::string(1048576 - 15, 'x'));
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(XDGUserDefaultsTest, FoldersThatAreNoneAreNamed)
{
    const EnvironmentVariable home("HOME", "/dev/null");
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", nullptr);
    XDGUserDefaults nowhere(XDGUserDefaults::defaultPath());
    EXPECT_FALSE(nowhere.boolForKey("key"));
    EXPECT_EQ(errorOf([&] { nowhere.setBool(true, "key"); }),
        "/dev/null/.config/TOLVGraphing/settings.ini: cannot be written, its folder /dev/null/.config/TOLVGraphing cannot be made: Not a directory");
}

TEST_F(XDGUserDefaultsTest, AnEmptyNameIsAnError)
{
    try {
        m_defaults.setBool(true, "");
        ADD_FAILURE() << "no error";
    } catch (const Exception& error) {
        EXPECT_EQ(error.name(), "EmptyKey");
    }
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(XDGUserDefaultsTest, MissingFoldersAreMadeForTheUserOnly)
{
    XDGUserDefaults deep(m_folder.path("one/two/settings.ini"));
    EXPECT_EQ(deep.integerForKey("key"), 0);
    EXPECT_THAT(m_folder.names(), IsEmpty());
    deep.setInteger(5, "key");
    EXPECT_EQ(m_folder.read("one/two/settings.ini"), "[General]\nkey=5\n");
    struct stat status {};
    ASSERT_EQ(::stat(m_folder.path("one").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
    EXPECT_THAT(m_log, IsEmpty());
}

TEST(XDGUserDefaults, TheFileIsInTheFolderOfConfigurations)
{
    struct Case {
        const char* configured;
        const char* expected;
    };
    const EnvironmentVariable home("HOME", "/home/somebody");
    const Case cases[] = {
        {"/etc/mine", "/etc/mine/TOLVGraphing/settings.ini"},
        {"relative", "/home/somebody/.config/TOLVGraphing/settings.ini"},
        {"", "/home/somebody/.config/TOLVGraphing/settings.ini"},
        {nullptr, "/home/somebody/.config/TOLVGraphing/settings.ini"},
    };
    for (const Case& test : cases) {
        const EnvironmentVariable configured("XDG_CONFIG_HOME", test.configured);
        EXPECT_EQ(XDGUserDefaults::defaultPath(), test.expected);
        EXPECT_EQ(XDGUserDefaults().path(), test.expected);
    }
    const EnvironmentVariable noHome("HOME", nullptr);
    const EnvironmentVariable nothing("XDG_CONFIG_HOME", nullptr);
    EXPECT_TRUE(XDGUserDefaults::defaultPath().string().ends_with("/.config/TOLVGraphing/settings.ini"));
}

TEST(XDGUserDefaults, TheInstalledStoreIsTheProcessesOwn)
{
    const testing_support::TemporaryFolder folder;
    const EnvironmentVariable configured("XDG_CONFIG_HOME", folder.path().c_str());
    installDesktopUserDefaults();
    UserDefaults::standardUserDefaults()->setInteger(612, "TOLVPlot_FixedCopyWidth");
    EXPECT_EQ(folder.read("TOLVGraphing/settings.ini"), "[General]\nTOLVPlot_FixedCopyWidth=612\n");
    UserDefaults::setStandardUserDefaults(nullptr);
    EXPECT_EQ(UserDefaults::standardUserDefaults()->integerForKey("TOLVPlot_FixedCopyWidth"), 0);
}

} // namespace
} // namespace TOLVGraphing
