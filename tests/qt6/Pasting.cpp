#include "Pasting.h"

#include "WidgetSetup.h"

#include <QProcess>

namespace TOLVGraphing::testing_support {

std::string pasted(const std::string& type)
{
    QProcess xclip;
    xclip.start("xclip", {"-selection", "clipboard", "-out", "-target", QString::fromStdString(type)});
    if (!waitUntil([&] { return xclip.state() == QProcess::NotRunning; }))
        xclip.kill();
    return xclip.readAllStandardOutput().toStdString();
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (const QByteArray& line : QByteArray::fromStdString(text).split('\n')) {
        if (!line.isEmpty())
            lines.push_back(line.toStdString());
    }
    return lines;
}

} // namespace TOLVGraphing::testing_support
