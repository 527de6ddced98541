#pragma once

#include <TOLVGraphing/platform/foundation/KeyedArchive.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing::app {

/// The values of one archived object, checked as they are read. Everything throws ArchiveError with the way to the value ("options.size"), what was found and what was expected.
class ArchivedValues {
public:
    /// The longest text in bytes.
    static constexpr std::size_t kLongestText = std::size_t{64} << 10U;
    /// The longest list of numbers or texts.
    static constexpr std::size_t kLongestList = 16384;

    /// `where` is the way to the object, empty for the root. The object is to be of the class.
    ArchivedValues(std::shared_ptr<const ArchiveObject> object, std::string where, std::string_view className);

    /// A value that has to be there.
    [[nodiscard]] const std::string& text(std::string_view key) const;
    [[nodiscard]] bool flag(std::string_view key) const;
    /// From `least` to `most`, both included.
    [[nodiscard]] double number(std::string_view key, double least, double most) const;
    [[nodiscard]] std::int64_t wholeNumber(std::string_view key, std::int64_t least) const;
    [[nodiscard]] std::vector<std::string> texts(std::string_view key) const;
    [[nodiscard]] std::vector<double> numbers(std::string_view key, double least, double most) const;
    [[nodiscard]] ArchivedValues object(std::string_view key, std::string_view className) const;
    [[nodiscard]] std::shared_ptr<ArchiveObject> anyObject(std::string_view key) const;
    [[nodiscard]] std::vector<ArchivedValues> objects(std::string_view key, std::string_view className, std::size_t mostCount) const;

    /// Nothing where there is none.
    [[nodiscard]] std::optional<std::string> optionalText(std::string_view key) const;
    [[nodiscard]] bool has(std::string_view key) const { return find(key) != nullptr; }

    /// The way to a value of this object.
    [[nodiscard]] std::string wayTo(std::string_view key) const;
    [[noreturn]] void fail(std::string_view key, const std::string& found, const std::string& expected) const;

private:
    [[nodiscard]] const ArchiveValue* find(std::string_view key) const;
    [[nodiscard]] const ArchiveArray& list(std::string_view key, const std::string& expected, std::size_t mostCount) const;
    [[nodiscard]] const std::string& textIn(const ArchiveValue* value, std::string_view key) const;
    [[nodiscard]] double numberIn(const ArchiveValue* value, std::string_view key, double least, double most) const;
    [[noreturn]] void failType(const ArchiveValue* found, std::string_view key, const std::string& expected) const;

    std::shared_ptr<const ArchiveObject> m_object;
    std::string m_where;
};

} // namespace TOLVGraphing::app
