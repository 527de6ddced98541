#pragma once

#include <desktop/input/MeasurementReader.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace TOLVGraphing::input::testing {

/// A file of its own for one test, deleted with the object.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string_view content, const std::string& suffix = ".csv")
    {
        static int count = 0;
        std::string name = "measurement_" + std::to_string(::getpid()) + "_" + std::to_string(count++) + suffix;
        m_path = (std::filesystem::temp_directory_path() / name).string();
        write(content);
    }
    ~TemporaryFile() { std::filesystem::remove(m_path); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(std::string_view content) const
    {
        // Writing over a file makes some file systems wait for the disk; a new one does not.
        std::filesystem::remove(m_path);
        std::ofstream file(m_path, std::ios::binary | std::ios::trunc);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
    }
    [[nodiscard]] const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

inline std::string textOfValue(float value)
{
    if (std::isnan(value))
        return "nan";
    char buffer[32];
    return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

/// The columns on one line: `time[s]: 0 1 2 | value: 5 nan 7 | date(date): 15340 | when(date from 20513): 0.5`. Values are printed exactly.
inline std::string summary(const MeasurementTable& table)
{
    std::string text;
    for (const MeasurementColumn& column : table.columns) {
        text += text.empty() ? "" : " | ";
        text += column.displayName();
        text += column.unit.empty() ? "" : "[" + column.unit + "]";
        const std::string origin = column.dateOrigin == 0.0 ? "" : " from " + textOfValue(static_cast<float>(column.dateOrigin));
        text += column.kind == ColumnKind::Number ? "" : "(" + std::string(columnKindName(column.kind)) + origin + ")";
        text += ":";
        for (float value : column.values)
            text += " " + textOfValue(value);
    }
    return text;
}

/// The table of a file with this content.
inline MeasurementTable readContent(std::string_view content, const ReadSettings& settings = {}, const std::string& suffix = ".csv")
{
    TemporaryFile file(content, suffix);
    return readMeasurements(file.path(), settings);
}

/// summary() of a file with this content, or the error's text behind `FILE`.
inline std::string summaryOfContent(std::string_view content, const ReadSettings& settings = {}, const std::string& suffix = ".csv")
{
    TemporaryFile file(content, suffix);
    try {
        return summary(readMeasurements(file.path(), settings));
    } catch (const MeasurementError& error) {
        std::string text = error.what();
        return text.starts_with(file.path()) ? "FILE" + text.substr(file.path().size()) : "the error does not name the file: " + text;
    }
}

} // namespace TOLVGraphing::input::testing
