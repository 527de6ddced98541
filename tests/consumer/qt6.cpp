// The widget, grabbed without a display.
#include <hosts/qt6/GraphWidget.h>

#include <QApplication>
#include <QImage>
#include <QPixmap>

#include <cstdio>

int main(int argumentCount, char** arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argumentCount, arguments);
    TOLVGraphing::GraphWidget widget;
    widget.addSeries({0.0F, 1.0F, 2.0F}, {1.0F, 3.0F, 2.0F}, "Level");
    widget.resize(400, 300);
    const QImage image = widget.grab().toImage();
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            pixels += color.blue() > color.red() + 60 ? 1 : 0;
        }
    }
    std::printf("%d pixels of the series\n", pixels);
    return pixels > 50 ? 0 : 1;
}
