// A program that copies a graph and ends: two waves of 400 samples in a widget of 612 by 396 points.
// Usage: copying_program [--stay] [--samples COUNT]
// With --stay it writes "copied" and goes on answering until it is told to end. With --samples there is a third series of so many samples, for contents that are longer than one message to the display.

#include <hosts/qt6/GraphWidget.h>
#include <tests/desktop/ExampleView.h>

#include <hosts/qt6/QtServices.h>

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include <cstdio>
#include <vector>

using namespace TOLVGraphing;

namespace {

void addLongSeries(GraphWidget& widget, int count)
{
    std::vector<float> x(static_cast<std::size_t>(count));
    std::vector<float> y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<float>(i) * 1e-5F;
        y[i] = static_cast<float>(i % 1000) * 1e-3F;
    }
    widget.addSeries(std::move(x), std::move(y), "long");
}

} // namespace

int main(int argumentCount, char** arguments)
{
    QApplication application(argumentCount, arguments);
    QApplication::setOrganizationName("TOLVGraphing");
    QApplication::setApplicationName("copying program");
    QCommandLineParser options;
    options.addOptions({{"stay", "Goes on answering until it is told to end."}, {"samples", "The length of a third series.", "COUNT", "0"}});
    options.process(application);

    installQtServices();
    GraphWidget widget(testing_support::exampleView({0.0, 0.0, 612.0, 396.0}));
    if (const int count = options.value("samples").toInt(); count > 0)
        addLongSeries(widget, count);
    widget.resize(612, 396);
    widget.show();
    QTimer::singleShot(0, &application, [&] {
        widget.action(GraphCommand::Copy)->trigger();
        std::puts("copied");
        std::fflush(stdout);
        if (!options.isSet("stay"))
            QApplication::quit();
    });
    return QApplication::exec();
}
