#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::input {

/// One field of a record. The text lies in the splitter's input, without the blanks around it and without its quotes.
struct FieldText {
    std::string_view text;
    bool hasDoubledQuotes = false;

    /// The text with doubled quotes made single, in UTF-8 whatever the file is in, see asUtf8().
    [[nodiscard]] std::string unquoted() const;
};

/// Splits text into records and fields.
///
/// A record ends at LF, CR LF or CR outside quotes. A field that starts with a quotation mark ends at the next single one and may contain
/// separators, line ends and doubled quotation marks; where something else than a separator follows the closing mark, the marks are
/// ordinary characters. Between blanks as separators there are no empty fields; with other separators a separator at the end of the line
/// makes an empty last field.
class RecordSplitter {
public:
    enum class Status {
        Complete,      ///< fields() and next() are set
        Incomplete,    ///< the text ends within the record
        OpenQuote,     ///< the text ends within quotes
        BinaryByte,    ///< there is a NUL
        FieldTooLong,  ///< more than kMaximumFieldLength bytes
        TooManyFields, ///< more than kMaximumColumnCount + 1, the one being the empty field behind a last separator
    };

    /// ' ' stands for runs of blanks and tabs.
    explicit RecordSplitter(char delimiter);

    /// Splits the record at `position`. A NUL must stand at `end`.
    Status split(const char* position, const char* end);

    /// Valid until the next split and as long as the text is.
    [[nodiscard]] const std::vector<FieldText>& fields() const { return m_fields; }
    /// Behind the record's line end.
    [[nodiscard]] const char* next() const { return m_next; }
    /// How many lines the record takes: more than one where quotes contain line ends. Where the status is not Complete, the lines up to
    /// the offending place, which is on the last of them.
    [[nodiscard]] std::size_t lineCount() const { return m_lineCount; }

private:
    Status splitField(const char*& position, const char* end);
    Status splitQuotedField(const char*& position, const char* end);
    Status splitPlainField(const char* begin, const char*& position, const char* end);
    Status endRecord(const char* position, const char* end);
    [[nodiscard]] bool isBlank(char character) const { return character == ' ' || (character == '\t' && m_delimiter != '\t'); }
    void skipBlanks(const char*& position) const;

    char m_delimiter;
    /// The characters that end a field without quotes.
    std::array<bool, 256> m_isStop = {};
    std::vector<FieldText> m_fields;
    const char* m_next = nullptr;
    std::size_t m_lineCount = 0;
};

} // namespace TOLVGraphing::input
