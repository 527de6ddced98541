#include "PostScriptComments.h"

#include "OutputError.h"
#include "TOLVGraphing/platform/text/NumberText.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace TOLVGraphing::output {

namespace {

constexpr std::size_t kLongestComment = 200;

/// A comment line holds 7-bit characters only, and not many.
std::string commentText(const std::string& text)
{
    std::string comment = "(";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isContinuation = (byte & 0xC0U) == 0x80U;
        if (isContinuation || comment.size() >= kLongestComment)
            continue;
        if (character == '(' || character == ')' || character == '\\')
            comment += '\\';
        comment += byte >= 0x20U && byte < 0x7FU ? character : '?';
    }
    return comment + ")";
}

/// The lines that take a comment's place; nothing drops it.
std::string replacement(std::string_view line, const PostScriptHead& head)
{
    const std::string whole = " 0 0 " + shortestText(std::ceil(head.size.width)) + " " + shortestText(std::ceil(head.size.height)) + "\n";
    const std::string exact = " 0 0 " + shortestText(head.size.width) + " " + shortestText(head.size.height) + "\n";
    if (line.starts_with("%%CreationDate:"))
        return {};
    if (line.starts_with("%%Creator:"))
        return (head.creator.empty() ? std::string() : "%%Creator: " + commentText(head.creator) + "\n")
            + (head.title.empty() ? std::string() : "%%Title: " + commentText(head.title) + "\n");
    if (line.starts_with("%%BoundingBox:"))
        return "%%BoundingBox:" + whole + "%%HiResBoundingBox:" + exact;
    if (line.starts_with("%%PageBoundingBox:"))
        return "%%PageBoundingBox:" + whole;
    return std::string(line);
}

} // namespace

std::vector<std::byte> withPageComments(const std::vector<std::byte>& file, const PostScriptHead& head)
{
    const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    const std::size_t end = text.find("%%EndPageSetup\n");
    if (end == std::string_view::npos)
        throw OutputError("cannot make the PostScript page: it has no page setup");
    std::string start;
    for (std::size_t line = 0; line < end;) {
        const std::size_t next = text.find('\n', line) + 1;
        start += replacement(text.substr(line, next - line), head);
        line = next;
    }
    std::vector<std::byte> result(start.size() + text.size() - end);
    std::copy_n(reinterpret_cast<const std::byte*>(start.data()), start.size(), result.begin());
    std::copy(file.begin() + static_cast<std::ptrdiff_t>(end), file.end(), result.begin() + static_cast<std::ptrdiff_t>(start.size()));
    return result;
}

} // namespace TOLVGraphing::output
