#pragma once

#include <TOLVGraphing/platform/foundation/UserDefaults.h>
#include <TOLVMath/Export.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace TOLVGraphing {

/// The application's settings, as QSettings keeps them under the names of organisation and application at the time of each call. Names without a value read as false, 0 and the empty text; so do values that are none of the kind.
class TOLV_EXPORT QtUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) const override;
    [[nodiscard]] std::string stringForKey(std::string_view key) const override;
    void setBool(bool value, std::string_view key) override;
    void setInteger(std::int64_t value, std::string_view key) override;
    void setString(const std::string& value, std::string_view key) override;
};

} // namespace TOLVGraphing
