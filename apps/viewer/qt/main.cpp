#include "Appearance.h"
#include "Display.h"
#include "MainWindow.h"
#include "ProgramIcon.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <optional>

using namespace TOLVGraphing::app;

namespace {

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QCoreApplication::translate("main", "Shows measurements as graphs to zoom, mark, print and export."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILES"), QCoreApplication::translate("main", "Measurement files for one graph, or one graph document (.tolvgraph)"), QStringLiteral("[FILES...]"));
}

bool asksForText(const QStringList& arguments)
{
    for (const char* option : {"-h", "--help", "--help-all", "-v", "--version"}) {
        if (arguments.contains(QLatin1String(option)))
            return true;
    }
    return false;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    QCoreApplication::setOrganizationName(QStringLiteral("TOLVGraphing"));
    QCoreApplication::setApplicationName(QStringLiteral("viewer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TOLVGRAPHING_VERSION));
    QCommandLineParser parser;
    QStringList words;
    for (int i = 0; i < argumentCount; ++i)
        words << QString::fromLocal8Bit(arguments[i]);
    if (!hasDisplay(words) || asksForText(words)) {
        const QCoreApplication text(argumentCount, arguments);
        QCoreApplication::setApplicationName(QStringLiteral("tolvgraph-viewer"));
        describe(parser);
        // Ends the program where help or version are asked for, and where an option is unknown.
        parser.process(text);
        sayThatDisplayIsMissing();
        return 1;
    }
    std::optional<DisplayGuard> guard(std::in_place);
    const QApplication application(argumentCount, arguments);
    guard.reset();
    QGuiApplication::setDesktopFileName(QStringLiteral("tolvgraph-viewer"));
    QApplication::setWindowIcon(programIcon());
    describe(parser);
    parser.process(application);
    applyAppearance(chosenAppearance());

    MainWindow window;
    window.show();
    QStringList files;
    for (const QString& file : parser.positionalArguments())
        files << QFileInfo(file).absoluteFilePath();
    window.openFiles(files);
    return QApplication::exec();
}
