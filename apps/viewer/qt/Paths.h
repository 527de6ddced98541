#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace TOLVGraphing::app {

// File names between the model, where they are bytes, and the windows, where they are texts.

[[nodiscard]] QString textOfFile(const std::string& path);
[[nodiscard]] std::string fileOfText(const QString& path);
[[nodiscard]] std::vector<std::string> filesOfTexts(const QStringList& paths);
/// The name without its folder.
[[nodiscard]] QString nameOfFile(const std::string& path);

} // namespace TOLVGraphing::app
