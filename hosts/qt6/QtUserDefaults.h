#pragma once

#include <TOLVGraphing/platform/foundation/UserDefaults.h>
#include <TOLVMath/Export.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace TOLVGraphing {

/// The application's settings, as QSettings keeps them under the names of organisation and application at the time of each call. Names without a value read as false, 0 and the empty text; so do values that are none of the kind.
///
/// QSettings keeps what is set and writes it to its file; a file that cannot be written is told by nobody here. Without the names of organisation and application nothing is kept. Names of settings are UTF-8 and not empty; a slash in one makes a group, as QSettings has it. Used from one thread.
class TOLV_EXPORT QtUserDefaults final : public UserDefaults {
public:
    /// "true" and "yes" in any letter case, and whole numbers other than 0, are true; all else is false.
    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    /// 0 for names without a value and for what is no whole number of 64 bits.
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) const override;
    /// In UTF-8; empty for names without a value.
    [[nodiscard]] std::string stringForKey(std::string_view key) const override;
    /// Stores the value under the name.
    void setBool(bool value, std::string_view key) override;
    /// Stores the value under the name.
    void setInteger(std::int64_t value, std::string_view key) override;
    /// Stores the text (UTF-8; other bytes are replaced) under the name.
    void setString(const std::string& value, std::string_view key) override;
};

} // namespace TOLVGraphing
