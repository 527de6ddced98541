#include <hosts/qt6/DisplayGuard.h>
#include <hosts/qt6/GraphWidget.h>

#include <QApplication>

#include <cmath>
#include <optional>
#include <vector>

int main(int argumentCount, char** arguments)
{
    std::optional<TOLVGraphing::DisplayGuard> guard(std::in_place, "qt-minimal");
    QApplication application(argumentCount, arguments);
    guard.reset();

    std::vector<float> time(1'000'000), voltage(time.size());
    for (std::size_t i = 0; i < time.size(); ++i) {
        time[i] = static_cast<float>(i) * 1e-5F;
        voltage[i] = std::sin(20.0F * time[i]) * std::exp(-0.3F * time[i]);
    }

    TOLVGraphing::GraphWidget widget;
    widget.addSeries(time, voltage, "Voltage");
    widget.show();

    return application.exec();
}
