#pragma once

#include <desktop/input/ByteSource.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace TOLVGraphing::input {

/// A sliding window over the text of a source, in UTF-8, made of a few megabytes however long the file is.
///
/// A byte order mark is removed, UTF-16 with a byte order mark is decoded; an unpaired half of a surrogate pair becomes U+FFFD. UTF-16
/// without a mark and UTF-32 are a MeasurementError. Bytes that are not valid UTF-8 pass unchanged (asUtf8() is for
/// the texts that are kept).
///
/// The text in the window is followed by a NUL byte that is not part of it, so that a scan for a terminator needs no other bound. The last
/// line of the file always ends in a line end: a missing one is added.
class TextBuffer {
public:
    /// `source` must outlive the buffer. Reads the first block.
    explicit TextBuffer(ByteSource& source);

    /// The text that is not consumed yet. The pointers are good until fill().
    [[nodiscard]] const char* begin() const { return m_bytes.get() + m_begin; }
    [[nodiscard]] const char* end() const { return m_bytes.get() + m_end; }
    /// There is no text beyond end().
    [[nodiscard]] bool isAtEnd() const { return m_isAtEnd; }
    /// The source's bytes that lie before begin(), as far as that can be told: approximate for UTF-16.
    [[nodiscard]] std::uint64_t consumedBytes() const;

    /// Takes away the text before `position`, which lies in the window.
    void consumeTo(const char* position) { m_begin = static_cast<std::size_t>(position - m_bytes.get()); }
    /// Reads one more block behind the text. `line` is the line of begin(), for the error where a line is longer than kMaximumLineLength.
    void fill(std::size_t line);

private:
    enum class Encoding { Bytes, LittleEndian16, BigEndian16 };

    void detectEncoding();
    void reserve(std::size_t length);
    std::size_t readText(char* target, std::size_t count);
    std::size_t decode(const char* units, std::size_t unitBytes, char* target);

    ByteSource& m_source;
    Encoding m_encoding = Encoding::Bytes;
    /// The first half of a surrogate pair whose second half is in the next block.
    unsigned m_pendingSurrogate = 0;
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_capacity = 0;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    bool m_isAtEnd = false;
};

} // namespace TOLVGraphing::input
