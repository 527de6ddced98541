#pragma once

#include "../output/FileError.h"
#include "SettingsText.h"
#include "TOLVGraphing/platform/foundation/UserDefaults.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace TOLVGraphing {

/// The user's settings in a file that people may edit: lines `key=value` under `[General]`, as SettingsText reads them.
///
/// The file is looked at on every reading, and read again after it has changed, so that what another process or an editor saved holds at once. A file that is not there has no settings. One that cannot be read, or has more
/// than 1 MiB, has none either and is logged, as is a line that cannot be understood, with the file's name and the line's number, once for each state of the file. Used from one thread; other objects and processes may use the same file.
///
/// Setters write at once, and the file is replaced as a whole; comments, other sections and lines that are not understood stay. Of two processes that set at the same moment the later one wins. Folders that are missing are made,
/// for the user only. A setter throws FileError when the file cannot be written, and also when it cannot be read, because its other contents would be lost, or when it would have more than 1 MiB; the settings are then as they were. An empty name throws Exception "EmptyKey".
class TOLV_EXPORT XDGUserDefaults final : public UserDefaults {
public:
    /// The settings in the file (the path is copied, and counts from the current folder where it is relative), which need not exist: nothing is read before the first question and nothing is made before a setting is.
    explicit XDGUserDefaults(std::filesystem::path path = defaultPath());
    ~XDGUserDefaults() override;

    /// TOLVGraphing/settings.ini in the folder that XDG_CONFIG_HOME names, or else in .config of the home folder (HOME, else that of the user's account). A relative XDG_CONFIG_HOME does not count.
    [[nodiscard]] static std::filesystem::path defaultPath();
    /// The file, as it was given.
    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    /// "true", "yes" and whole numbers other than 0 are true; "false", "no", 0 and names without a value are false. Other texts are false and logged.
    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    /// 0 for names without a value. Texts that are not a whole number of 64 bits are 0 and logged.
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) const override;
    /// The text as it is in the file, empty for names without a value.
    [[nodiscard]] std::string stringForKey(std::string_view key) const override;
    /// Stores "true" or "false".
    void setBool(bool value, std::string_view key) override;
    /// Stores the digits.
    void setInteger(std::int64_t value, std::string_view key) override;
    /// Stores the text, with line ends and whatever other bytes it has.
    void setString(const std::string& value, std::string_view key) override;

private:
    /// What tells one state of the file from another.
    struct State {
        /// The reason why the file's state is not known, or 0.
        int error = 0;
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t size = 0;
        /// Nanoseconds since 1970 of the last change of the contents and of the last one of anything.
        std::int64_t modified = 0;
        std::int64_t changed = 0;

        friend bool operator==(const State&, const State&) = default;
    };

    [[nodiscard]] static State stateOfFile(const std::filesystem::path& path);
    /// The file's bytes, none where there is no file. Throws FileError.
    [[nodiscard]] std::string contents() const;
    void readIfChanged() const;
    void reportProblems() const;
    void reportValue(std::string_view key, const std::string& value, const std::string& expected) const;

    std::filesystem::path m_path;
    // What is known of the file, brought up to date by every reading.
    mutable std::optional<State> m_state;
    mutable defaults::SettingsText m_settings;
    mutable std::set<std::string, std::less<>> m_reported;
};

/// Makes the settings in `XDGUserDefaults::defaultPath()` those of the process (UserDefaults::standardUserDefaults). Programs without a toolkit's own settings call it once at their start.
TOLV_EXPORT void installDesktopUserDefaults();

} // namespace TOLVGraphing
