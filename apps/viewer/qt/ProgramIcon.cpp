#include "ProgramIcon.h"

#include <QString>

namespace TOLVGraphing::app {

namespace {

/// The sides of the images that are built in, in pixels.
constexpr int kSides[] = {16, 24, 32, 48, 64, 128, 256};

QIcon builtInIcon()
{
    QIcon icon;
    for (const int side : kSides)
        icon.addFile(QStringLiteral(":/icons/%1x%1/apps/%2.png").arg(QString::number(side), QLatin1String(kProgramIdentifier)), QSize(side, side));
    return icon;
}

} // namespace

QIcon programIcon()
{
    return QIcon::fromTheme(QLatin1String(kProgramIdentifier), builtInIcon());
}

} // namespace TOLVGraphing::app
