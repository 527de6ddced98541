#include "InformationDialogs.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace TOLVGraphing::app {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("InformationDialogs", text);
}

void showText(QWidget* parent, const QString& title, const QString& html, const QSize& size)
{
    QDialog dialog(parent);
    dialog.setWindowTitle(title);
    auto* text = new QTextBrowser;
    text->setHtml(html);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* rows = new QVBoxLayout(&dialog);
    rows->addWidget(text);
    rows->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    dialog.resize(size);
    dialog.exec();
}

/// What to do, and what happens then.
struct Gesture {
    const char* input;
    const char* result;
};

constexpr Gesture kPointer[] = {{QT_TRANSLATE_NOOP("InformationDialogs", "Wheel"), QT_TRANSLATE_NOOP("InformationDialogs", "Zooms x about the pointer")},
    {QT_TRANSLATE_NOOP("InformationDialogs", "Shift + wheel"), QT_TRANSLATE_NOOP("InformationDialogs", "Zooms y")},
    {QT_TRANSLATE_NOOP("InformationDialogs", "Ctrl + wheel"), QT_TRANSLATE_NOOP("InformationDialogs", "Zooms both")},
    {QT_TRANSLATE_NOOP("InformationDialogs", "Drag"), QT_TRANSLATE_NOOP("InformationDialogs", "Moves the graph, or the marker under the pointer")},
    {QT_TRANSLATE_NOOP("InformationDialogs", "Drag with the right button"), QT_TRANSLATE_NOOP("InformationDialogs", "Zooms to a box")},
    {QT_TRANSLATE_NOOP("InformationDialogs", "Double click"), QT_TRANSLATE_NOOP("InformationDialogs", "Places a marker")},
    {QT_TRANSLATE_NOOP("InformationDialogs", "Double click on an axis"), QT_TRANSLATE_NOOP("InformationDialogs", "Fits this axis to the data")},
    {QT_TRANSLATE_NOOP("InformationDialogs", "Right click"), QT_TRANSLATE_NOOP("InformationDialogs", "All commands of the graph")},
    {QT_TRANSLATE_NOOP("InformationDialogs", "Drop files"), QT_TRANSLATE_NOOP("InformationDialogs", "Opens them; with Ctrl adds them to the graph")}};

constexpr Gesture kKeys[]
    = {{QT_TRANSLATE_NOOP("InformationDialogs", "Arrows"), QT_TRANSLATE_NOOP("InformationDialogs", "Move the graph, or left and right the selected marker; with Shift by a point")},
        {QT_TRANSLATE_NOOP("InformationDialogs", "+ and -"), QT_TRANSLATE_NOOP("InformationDialogs", "Zoom; with Shift y only")},
        {QT_TRANSLATE_NOOP("InformationDialogs", "Home, Ctrl+0"), QT_TRANSLATE_NOOP("InformationDialogs", "Show all data")},
        {QT_TRANSLATE_NOOP("InformationDialogs", "M"), QT_TRANSLATE_NOOP("InformationDialogs", "Places a marker at the pointer or in the middle")},
        {QT_TRANSLATE_NOOP("InformationDialogs", "N, Shift+N"), QT_TRANSLATE_NOOP("InformationDialogs", "Select the markers in turn")},
        {QT_TRANSLATE_NOOP("InformationDialogs", "Delete"), QT_TRANSLATE_NOOP("InformationDialogs", "Removes the selected marker")},
        {QT_TRANSLATE_NOOP("InformationDialogs", "Escape"), QT_TRANSLATE_NOOP("InformationDialogs", "Cancels a drag or the selection")},
        {QT_TRANSLATE_NOOP("InformationDialogs", "Ctrl+Z, Ctrl+Shift+Z"), QT_TRANSLATE_NOOP("InformationDialogs", "Undo and redo changes of markers and of the panels")}};

template <typename Gestures>
QString tableOf(const char* heading, const Gestures& gestures)
{
    QString html = QStringLiteral("<h3>%1</h3><table cellpadding=\"3\">").arg(translated(heading));
    for (const Gesture& gesture : gestures)
        html += QStringLiteral("<tr><td><b>%1</b></td><td>%2</td></tr>").arg(translated(gesture.input), translated(gesture.result));
    return html + QStringLiteral("</table>");
}

} // namespace

void showKeysAndGestures(QWidget* parent)
{
    const QString html = tableOf(QT_TRANSLATE_NOOP("InformationDialogs", "Pointer"), kPointer) + tableOf(QT_TRANSLATE_NOOP("InformationDialogs", "Keys"), kKeys);
    showText(parent, translated("Keys and Gestures"), html, {620, 560});
}

void showAbout(QWidget* parent)
{
    QMessageBox::about(parent, translated("About"),
        translated("<h3>Graph Viewer %1</h3><p>Opens measurements, shows them exactly, and writes the same picture on screen, paper and to files.</p><p>Measurement files are only "
                   "read, never changed.</p>")
            .arg(QStringLiteral(TOLVGRAPHING_VERSION)));
}

void showNotes(QWidget* parent, const QStringList& notes)
{
    QString html;
    for (const QString& note : notes)
        html += QStringLiteral("<p>%1</p>").arg(note.toHtmlEscaped());
    showText(parent, translated("Notes on the Measurements"), html, {520, 320});
}

} // namespace TOLVGraphing::app
