#include "../desktop/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QSettings>

/// The tests' own settings and home folder: no user's are read or written.
int main(int argumentCount, char** arguments)
{
    ::testing::InitGoogleMock(&argumentCount, arguments);
    const TOLVGraphing::testing_support::TemporaryFolder folder;
    qputenv("HOME", QByteArray::fromStdString(folder.path()));
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder.path()));
    QCoreApplication::setOrganizationName(QStringLiteral("TOLVGraphingTests"));
    QCoreApplication::setApplicationName(QStringLiteral("window_tests"));
    const QApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
