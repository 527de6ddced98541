#include "Paths.h"

#include <QFile>
#include <QFileInfo>

namespace TOLVGraphing::app {

QString textOfFile(const std::string& path)
{
    return QFile::decodeName(QByteArray::fromStdString(path));
}

std::string fileOfText(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

std::vector<std::string> filesOfTexts(const QStringList& paths)
{
    std::vector<std::string> files;
    for (const QString& path : paths)
        files.push_back(fileOfText(path));
    return files;
}

QString nameOfFile(const std::string& path)
{
    return QFileInfo(textOfFile(path)).fileName();
}

} // namespace TOLVGraphing::app
