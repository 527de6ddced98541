#include <desktop/input/MeasurementError.h>

#include <desktop/input/Utf8.h>

#include <utility>

namespace TOLVGraphing::input {

namespace {

std::string messageText(const std::string& file, std::size_t line, const std::string& found, const std::string& expected)
{
    std::string text = file;
    if (line > 0)
        text += ":" + std::to_string(line);
    return text + ": " + found + ", " + expected;
}

} // namespace

MeasurementError::MeasurementError(std::string file, std::size_t line, std::string found, std::string expected)
    : std::runtime_error(messageText(file, line, found, expected))
    , m_file(std::move(file))
    , m_line(line)
    , m_found(std::move(found))
    , m_expected(std::move(expected))
{
}

ReadingCancelled::ReadingCancelled(const std::string& file) : std::runtime_error(file + ": reading was cancelled") {}

std::string quotedExcerpt(std::string_view text)
{
    // Longer texts are cut anyway, so their ends need not be looked at.
    std::string whole = asUtf8(text.substr(0, 4096));
    std::string_view shown = whole;
    constexpr std::size_t longest = 40;
    bool isCut = shown.size() > longest;
    if (isCut) {
        std::size_t length = longest;
        // 10xxxxxx continues a UTF-8 character: step back to its first byte.
        while (length > 0 && (static_cast<unsigned char>(shown[length]) & 0xC0U) == 0x80U)
            --length;
        shown = shown.substr(0, length);
    }
    std::string excerpt = "'";
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const auto byte = static_cast<unsigned char>(shown[i]);
        const bool isLateControl = byte == 0xC2 && i + 1 < shown.size() && static_cast<unsigned char>(shown[i + 1]) < 0xA0;
        excerpt += byte < 0x20 || byte == 0x7F || isLateControl ? '?' : shown[i];
        i += isLateControl ? 1 : 0;
    }
    return excerpt + (isCut ? "...'" : "'");
}

} // namespace TOLVGraphing::input
