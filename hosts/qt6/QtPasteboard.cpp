#include "QtPasteboard.h"

#include "ClipboardHandover.h"

#include <TOLVGraphing/platform/foundation/Log.h>

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace TOLVGraphing {

namespace {

/// The name under which toolkits look for text.
constexpr const char* kPlainText = "text/plain";
/// How long the end of the program waits for a clipboard manager: enough for tens of megabytes on a slow machine.
constexpr std::chrono::seconds kHandoverPatience(10);

/// Contents as the clipboard passes them on: each type's bytes when they are asked for.
class GraphMimeData final : public QMimeData {
public:
    explicit GraphMimeData(std::shared_ptr<MemoryPasteboard> contents) : m_contents(std::move(contents)) {}

    [[nodiscard]] QStringList formats() const override
    {
        QStringList formats;
        for (const std::string& type : m_contents->types())
            formats << QString::fromStdString(type);
        if (formats.contains(nameOf(kPasteboardTypeText)))
            formats << kPlainText;
        return formats;
    }

    [[nodiscard]] bool hasFormat(const QString& mimeType) const override { return formats().contains(mimeType); }

protected:
    [[nodiscard]] QVariant retrieveData(const QString& mimeType, QMetaType type) const override
    {
        const std::string name = mimeType == kPlainText ? std::string(kPasteboardTypeText) : mimeType.toStdString();
        try {
            const auto data = m_contents->dataForType(name);
            if (!data)
                return {};
            const QByteArray bytes(reinterpret_cast<const char*>(data->data()), static_cast<qsizetype>(data->size()));
            return type.id() == QMetaType::QString ? QVariant(QString::fromUtf8(bytes)) : QVariant(bytes);
        } catch (const std::exception& problem) {
            // Another program asks, from the event loop: there is nobody to throw to.
            writeLog("the clipboard's " + name + " could not be made: " + problem.what());
            return {};
        }
    }

private:
    static QString nameOf(std::string_view type) { return QString::fromUtf8(type.data(), static_cast<qsizetype>(type.size())); }

    std::shared_ptr<MemoryPasteboard> m_contents;
};

} // namespace

void QtPasteboard::declareTypes(const std::vector<std::string>& types)
{
    m_contents = std::make_shared<MemoryPasteboard>();
    m_contents->declareTypes(types);
}

void QtPasteboard::addTypes(const std::vector<std::string>& types)
{
    if (m_contents)
        m_contents->addTypes(types);
}

bool QtPasteboard::setDataForType(Data data, std::string_view type)
{
    return m_contents && m_contents->setDataForType(std::move(data), type);
}

bool QtPasteboard::setProviderForType(std::function<Data()> provider, std::string_view type)
{
    return m_contents && m_contents->setProviderForType(std::move(provider), type);
}

void QtPasteboard::finish()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!m_contents || !clipboard)
        return;
    auto* contents = new GraphMimeData(std::exchange(m_contents, nullptr));
    // The clipboard deletes the contents when others take their place, and the connection goes with them.
    QObject::connect(qGuiApp, &QCoreApplication::aboutToQuit, contents, [] { handClipboardOver(kHandoverPatience); });
    clipboard->setMimeData(contents);
}

} // namespace TOLVGraphing
