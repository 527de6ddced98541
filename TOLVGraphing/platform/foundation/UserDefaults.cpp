#include "UserDefaults.h"

#include <charconv>
#include <utility>

namespace TOLVGraphing {

namespace {

std::shared_ptr<UserDefaults>& installedDefaults()
{
    static std::shared_ptr<UserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    return defaults;
}

} // namespace

UserDefaults::~UserDefaults() = default;

std::shared_ptr<UserDefaults> UserDefaults::standardUserDefaults()
{
    return installedDefaults();
}

void UserDefaults::setStandardUserDefaults(std::shared_ptr<UserDefaults> defaults)
{
    installedDefaults() = defaults ? std::move(defaults) : std::make_shared<MemoryUserDefaults>();
}

std::string MemoryUserDefaults::stringForKey(std::string_view key) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? std::string() : found->second;
}

std::int64_t MemoryUserDefaults::integerForKey(std::string_view key) const
{
    const std::string text = stringForKey(key);
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && parsed == end ? number : 0;
}

bool MemoryUserDefaults::boolForKey(std::string_view key) const
{
    const std::string text = stringForKey(key);
    return text == "true" || text == "yes" || integerForKey(key) != 0;
}

void MemoryUserDefaults::setBool(bool value, std::string_view key)
{
    setString(value ? "true" : "false", key);
}

void MemoryUserDefaults::setInteger(std::int64_t value, std::string_view key)
{
    setString(std::to_string(value), key);
}

void MemoryUserDefaults::setString(const std::string& value, std::string_view key)
{
    m_values.insert_or_assign(std::string(key), value);
}

} // namespace TOLVGraphing
