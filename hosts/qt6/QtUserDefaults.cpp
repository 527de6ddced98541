#include "QtUserDefaults.h"

#include <QSettings>
#include <QString>
#include <QVariant>

namespace TOLVGraphing {

namespace {

QString nameOf(std::string_view key)
{
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

QVariant valueOf(std::string_view key)
{
    return QSettings().value(nameOf(key));
}

} // namespace

bool QtUserDefaults::boolForKey(std::string_view key) const
{
    const QVariant value = valueOf(key);
    const QString text = value.toString().trimmed().toLower();
    return text == "true" || text == "yes" || value.toLongLong() != 0;
}

std::int64_t QtUserDefaults::integerForKey(std::string_view key) const
{
    return valueOf(key).toLongLong();
}

std::string QtUserDefaults::stringForKey(std::string_view key) const
{
    return valueOf(key).toString().toStdString();
}

void QtUserDefaults::setBool(bool value, std::string_view key)
{
    QSettings().setValue(nameOf(key), value);
}

void QtUserDefaults::setInteger(std::int64_t value, std::string_view key)
{
    QSettings().setValue(nameOf(key), static_cast<qlonglong>(value));
}

void QtUserDefaults::setString(const std::string& value, std::string_view key)
{
    QSettings().setValue(nameOf(key), QString::fromStdString(value));
}

} // namespace TOLVGraphing
