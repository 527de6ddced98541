#pragma once

#include <TOLVMath/Export.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace TOLVGraphing {

/// The settings that a user has made, by name (in UTF-8, not empty). A name that is not there reads as false, 0 or nothing; the library itself registers none. Used from one thread.
class TOLV_EXPORT UserDefaults {
public:
    virtual ~UserDefaults();

    /// The setting as a boolean, a whole number or a text in UTF-8; false, 0 or empty for a name that is not there, or for a text that reads as no such value.
    [[nodiscard]] virtual bool boolForKey(std::string_view key) const = 0;
    [[nodiscard]] virtual std::int64_t integerForKey(std::string_view key) const = 0;
    [[nodiscard]] virtual std::string stringForKey(std::string_view key) const = 0;
    /// Keeps the setting (copied) under the name, in place of what it was. A store in a file may throw when it cannot be written.
    virtual void setBool(bool value, std::string_view key) = 0;
    virtual void setInteger(std::int64_t value, std::string_view key) = 0;
    virtual void setString(const std::string& value, std::string_view key) = 0;

    /// The store of the process: one in memory until a desktop or a host installs its own. Never null.
    [[nodiscard]] static std::shared_ptr<UserDefaults> standardUserDefaults();
    /// Installs a store (shared); null brings an empty one in memory back.
    static void setStandardUserDefaults(std::shared_ptr<UserDefaults> defaults);
};

/// Settings that last as long as this object. Each is kept as the text that a settings file would have: "true", "false", digits. Texts that are no whole decimal number of 64 bits, without blanks and plus sign, read as 0, and what is neither "true", "yes" (in
/// lower case) nor such a number other than 0 as false. Throws nothing.
class TOLV_EXPORT MemoryUserDefaults : public UserDefaults {
public:
    [[nodiscard]] bool boolForKey(std::string_view key) const override;
    [[nodiscard]] std::int64_t integerForKey(std::string_view key) const override;
    [[nodiscard]] std::string stringForKey(std::string_view key) const override;
    void setBool(bool value, std::string_view key) override;
    void setInteger(std::int64_t value, std::string_view key) override;
    void setString(const std::string& value, std::string_view key) override;

    /// All settings as texts, by name.
    [[nodiscard]] const std::map<std::string, std::string, std::less<>>& values() const { return m_values; }

protected:
    /// All settings as texts, by name.
    std::map<std::string, std::string, std::less<>> m_values;
};

} // namespace TOLVGraphing
