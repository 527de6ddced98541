#include "../desktop/TemporaryFolder.h"

#include <apps/viewer/qt/ProgramIcon.h>

#include <TestPaths.h>

#include <gtest/gtest.h>

#include <QImage>

#include <filesystem>

namespace TOLVGraphing::app {

namespace {

/// As pixels are kept while they are drawn.
constexpr QImage::Format kFormat = QImage::Format_ARGB32_Premultiplied;

QImage imageOfIcon(int side)
{
    return programIcon().pixmap(QSize(side, side), 1.0).toImage().convertToFormat(kFormat);
}

TEST(ProgramIcon, isBuiltInWhereTheDesktopHasNone)
{
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        const QImage committed(QStringLiteral(TOLV_SOURCE_DIR "/apps/viewer/qt/desktop/icons/%1x%1/apps/%2.png").arg(QString::number(side), QLatin1String(kProgramIdentifier)));
        ASSERT_FALSE(committed.isNull()) << side;
        EXPECT_EQ(imageOfIcon(side), committed.convertToFormat(kFormat)) << side;
    }
}

TEST(ProgramIcon, isTheDesktopsWhereItHasOne)
{
    const testing_support::TemporaryFolder folder;
    std::filesystem::create_directories(folder.path("hicolor/32x32/apps"));
    folder.write("hicolor/index.theme", "[Icon Theme]\nName=Hicolor\nComment=Fallback\nDirectories=32x32/apps\n\n[32x32/apps]\nSize=32\nType=Fixed\n");
    QImage red(32, 32, kFormat);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(QString::fromStdString(folder.path("hicolor/32x32/apps/" + std::string(kProgramIdentifier) + ".png"))));
    const QStringList former = QIcon::themeSearchPaths();
    const QString formerName = QIcon::themeName();
    QIcon::setThemeSearchPaths({QString::fromStdString(folder.path())});
    QIcon::setThemeName(QStringLiteral("hicolor"));
    EXPECT_EQ(imageOfIcon(32), red);
    QIcon::setThemeName(formerName);
    QIcon::setThemeSearchPaths(former);
}

} // namespace

} // namespace TOLVGraphing::app
