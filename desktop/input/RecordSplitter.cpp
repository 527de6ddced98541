#include <desktop/input/RecordSplitter.h>

#include <desktop/input/ReadSettings.h>
#include <desktop/input/Utf8.h>

namespace TOLVGraphing::input {

std::string FieldText::unquoted() const
{
    if (!hasDoubledQuotes)
        return asUtf8(text);
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        result += text[index];
        if (text[index] == '"' && index + 1 < text.size() && text[index + 1] == '"')
            ++index;
    }
    return asUtf8(result);
}

RecordSplitter::RecordSplitter(char delimiter) : m_delimiter(delimiter)
{
    for (char stop : {delimiter, '\n', '\r', '\0'})
        m_isStop[static_cast<unsigned char>(stop)] = true;
    if (delimiter == ' ')
        m_isStop[static_cast<unsigned char>('\t')] = true;
}

RecordSplitter::Status RecordSplitter::split(const char* position, const char* end)
{
    m_fields.clear();
    m_lineCount = 1;
    for (;;) {
        skipBlanks(position);
        bool isLineEnd = *position == '\n' || *position == '\r';
        // Behind a separator a field follows even if it is empty; a blank line has no field, and blanks at its end are nothing.
        if (isLineEnd && (m_delimiter == ' ' || m_fields.empty()))
            return endRecord(position, end);
        if (m_fields.size() > kMaximumColumnCount)
            return Status::TooManyFields;
        Status status = splitField(position, end);
        if (status != Status::Complete)
            return status;
        if (*position == '\n' || *position == '\r')
            return endRecord(position, end);
        // With blanks as separators the run of them is skipped above.
        if (m_delimiter != ' ')
            ++position;
    }
}

RecordSplitter::Status RecordSplitter::splitField(const char*& position, const char* end)
{
    const char* begin = position;
    if (*position == '"')
        return splitQuotedField(position, end);
    return splitPlainField(begin, position, end);
}

RecordSplitter::Status RecordSplitter::splitQuotedField(const char*& position, const char* end)
{
    const char* begin = position++;
    bool hasDoubledQuotes = false;
    std::size_t lines = 0;
    for (;; ++position) {
        char character = *position;
        if (character == '"') {
            if (position[1] != '"')
                break;
            hasDoubledQuotes = true;
            ++position;
        } else if (character == '\0') {
            m_lineCount += position == end ? 0 : lines;
            return position == end ? Status::OpenQuote : Status::BinaryByte;
        } else if (character == '\n' || (character == '\r' && position[1] != '\n')) {
            ++lines;
        }
        if (static_cast<std::size_t>(position - begin) > kMaximumFieldLength)
            return Status::FieldTooLong;
    }
    const char* closing = position++;
    skipBlanks(position);
    bool isBlankBehind = m_delimiter == ' ' && position > closing + 1;
    if (!m_isStop[static_cast<unsigned char>(*position)] && !isBlankBehind) {
        position = begin;
        return splitPlainField(begin, position, end);
    }
    if (*position == '\0')
        return position == end ? Status::Incomplete : Status::BinaryByte;
    m_lineCount += lines;
    m_fields.push_back({std::string_view(begin + 1, static_cast<std::size_t>(closing - begin - 1)), hasDoubledQuotes});
    return Status::Complete;
}

RecordSplitter::Status RecordSplitter::splitPlainField(const char* begin, const char*& position, const char* end)
{
    while (!m_isStop[static_cast<unsigned char>(*position)])
        ++position;
    if (static_cast<std::size_t>(position - begin) > kMaximumFieldLength)
        return Status::FieldTooLong;
    if (*position == '\0')
        return position == end ? Status::Incomplete : Status::BinaryByte;
    const char* textEnd = position;
    while (textEnd > begin && isBlank(textEnd[-1]))
        --textEnd;
    m_fields.push_back({std::string_view(begin, static_cast<std::size_t>(textEnd - begin)), false});
    return Status::Complete;
}

RecordSplitter::Status RecordSplitter::endRecord(const char* position, const char* end)
{
    if (*position == '\r') {
        // The LF that belongs to this CR may be in the next block.
        if (position + 1 == end)
            return Status::Incomplete;
        position += position[1] == '\n' ? 1 : 0;
    }
    m_next = position + 1;
    return Status::Complete;
}

void RecordSplitter::skipBlanks(const char*& position) const
{
    while (isBlank(*position))
        ++position;
}

} // namespace TOLVGraphing::input
