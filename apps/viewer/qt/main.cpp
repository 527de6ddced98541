#include "Appearance.h"
#include "MainWindow.h"
#include "ProgramIcon.h"
#include "UserFolders.h"

#include <apps/plotting/ProgramStart.h>
#include <hosts/qt6/DisplayGuard.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <optional>

using namespace TOLVGraphing;
using namespace TOLVGraphing::app;

namespace {

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QCoreApplication::translate("main", "Shows measurements as graphs to zoom, mark, print and export."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        QStringLiteral("FILES"), QCoreApplication::translate("main", "Measurement files for one graph, or one graph document (.tolvgraph)"), QStringLiteral("[FILES...]"));
}

bool containsAny(const QStringList& arguments, std::initializer_list<const char*> options)
{
    return std::any_of(options.begin(), options.end(), [&](const char* option) { return arguments.contains(QLatin1String(option)); });
}

bool asksForText(const QStringList& arguments)
{
    return containsAny(arguments, {"-h", "--help", "--help-all", "-v", "--version"});
}

bool mayHaveDisplay(const QStringList& arguments)
{
    return DisplayGuard::isDisplayNamed() || containsAny(arguments, {"-platform", "--platform"});
}

} // namespace

int main(int argumentCount, char** arguments)
{
    prepareProgram();
    dropRelativeUserFolders();
    QCoreApplication::setOrganizationName(QStringLiteral("TOLVGraphing"));
    QCoreApplication::setApplicationName(QStringLiteral("viewer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TOLVGRAPHING_VERSION));
    QCommandLineParser parser;
    QStringList words;
    for (int i = 0; i < argumentCount; ++i)
        words << QString::fromLocal8Bit(arguments[i]);
    std::optional<DisplayGuard> guard(std::in_place, QStringLiteral("tolvgraph-viewer"), QStringLiteral("tolvgraph draws files without one"));
    if (!mayHaveDisplay(words) || asksForText(words)) {
        const QCoreApplication text(argumentCount, arguments);
        QCoreApplication::setApplicationName(QStringLiteral("tolvgraph-viewer"));
        describe(parser);
        // Ends the program where help or version are asked for, and where an option is unknown.
        parser.process(text);
        guard->sayThatDisplayIsMissing();
        return 1;
    }
    const QApplication application(argumentCount, arguments);
    guard.reset();
    makeSettingsFolder();
    QGuiApplication::setDesktopFileName(QLatin1String(kProgramIdentifier));
    QApplication::setWindowIcon(programIcon());
    describe(parser);
    if (!parser.parse(QCoreApplication::arguments())) {
        (void)std::fprintf(stderr, "tolvgraph-viewer: %s\n", qPrintable(parser.errorText()));
        return 1;
    }
    applyAppearance(chosenAppearance());

    MainWindow window;
    window.show();
    QStringList files;
    for (const QString& file : parser.positionalArguments())
        files << QFileInfo(file).absoluteFilePath();
    window.openFiles(files);
    return QApplication::exec();
}
