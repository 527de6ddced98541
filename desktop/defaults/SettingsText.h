#pragma once

#include <TOLVMath/Export.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Settings as a file that people may edit.
namespace TOLVGraphing::defaults {

/// A line of a settings file that says nothing. A value.
struct SettingsProblem {
    /// Counted from 1.
    std::size_t line = 0;
    /// What was expected there, without the file's name.
    std::string message;

    friend bool operator==(const SettingsProblem&, const SettingsProblem&) = default;
};

/// The text of a settings file: lines `key=value` under `[General]`, and whatever else the file has, which stays as it is. A value.
///
/// Lines before the first section belong to [General], whose name is read in any letter case. Comments begin with ';' or '#'. Blanks around keys and values do not count. Of two lines with one key the later one holds.
/// Keys are letters, digits, '_', '.' and '-'; every other byte of a name is written as a percent sign and two hexadecimal digits. A value that begins or ends with a blank or has a semicolon, a comma, an equals sign or a double quote is written in
/// double quotes. A backslash stands before a backslash, a double quote, `n`, `r` and `t` (newline, carriage return, tab) and `x` with hexadecimal digits of a character. This is how the settings files of many desktop programs read.
///
/// Any bytes can be read, and never throw; lines that cannot be understood are `problems()`. Lines end in a newline or a carriage return with one, as they were.
class TOLV_EXPORT SettingsText {
public:
    /// Of the whole contents of a file (copied); a byte order mark at their start is kept. No text is a file without settings.
    explicit SettingsText(std::string_view text = {});

    /// The value of a name in [General], without quotes and with its escapes undone; nothing where there is none.
    [[nodiscard]] std::optional<std::string> valueForKey(std::string_view key) const;
    /// The line, counted from 1, that the name's value comes from; 0 where there is none.
    [[nodiscard]] std::size_t lineOfKey(std::string_view key) const;
    /// The lines of [General] that are neither settings nor comments nor empty; they read as nothing and are kept.
    [[nodiscard]] const std::vector<SettingsProblem>& problems() const { return m_problems; }

    /// Replaces the line of the name (not empty), or adds one at the end of [General], which is added where it is missing. Every other line stays as it is. Name and value read back as the same bytes.
    void setValue(std::string_view value, std::string_view key);
    /// The contents for the file: without a change, the text that was read.
    [[nodiscard]] std::string text() const;

private:
    struct Line {
        /// Without the '\n'.
        std::string text;
        /// Of a setting in [General]; absent in every other line.
        std::optional<std::string> key;
        std::string value;
    };

    void readLine(Line& line, bool& isInGeneral);
    void addLine(const std::string& text);

    std::vector<Line> m_lines;
    std::vector<SettingsProblem> m_problems;
    /// The index behind the header and the settings of [General]; absent without a [General].
    std::optional<std::size_t> m_endOfGeneral;
};

} // namespace TOLVGraphing::defaults
