#include "FileCommands.h"

#include "DocumentController.h"
#include "ExportDialog.h"
#include "Paths.h"

#include <apps/viewer/DocumentExport.h>
#include <hosts/qt6/GraphPrinting.h>
#include <hosts/qt6/GraphWidget.h>
#include <hosts/qt6/ProblemDialog.h>

#include <QAbstractButton>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>

namespace TOLVGraphing::app {

namespace {

const QString kFolderKey = QStringLiteral("folder");

QString measurementFilter()
{
    return FileCommands::tr("Measurements (%1)").arg(QLatin1String("*.csv *.tsv *.txt *.dat *.asc *.npy *.f32 *.f64 *.wav *.flac *.ogg *.aif *.aiff *.CSV *.TXT *.WAV"));
}

QString documentFilter()
{
    return FileCommands::tr("Graph documents (*%1)").arg(QLatin1String(GraphDocument::kSuffix));
}

QString folder()
{
    return QSettings().value(kFolderKey, QDir::homePath()).toString();
}

void rememberFolderOf(const QString& path)
{
    QSettings().setValue(kFolderKey, QFileInfo(path).absolutePath());
}

} // namespace

FileCommands::FileCommands(DocumentController* controller, GraphWidget* graphWidget, QWidget* window)
    : QObject(window)
    , m_controller(controller)
    , m_graphWidget(graphWidget)
    , m_window(window)
{
    m_controller->setSourceFinder([this](const MissingSource& missing) { return askForSource(missing); });
}

// Opening.

QStringList FileCommands::chooseFiles(const QString& title, const QStringList& filters)
{
    QStringList paths = QFileDialog::getOpenFileNames(m_window, title, folder(), filters.join(QStringLiteral(";;")));
    if (!paths.isEmpty())
        rememberFolderOf(paths.front());
    return paths;
}

void FileCommands::chooseAndOpen()
{
    QString all = measurementFilter();
    all.replace(QLatin1String("*.csv"), QLatin1String("*.tolvgraph *.csv")).replace(tr("Measurements"), tr("Measurements and graphs"));
    openFiles(chooseFiles(tr("Open"), {all, measurementFilter(), documentFilter(), tr("All files (*)")}));
}

void FileCommands::chooseAndAdd()
{
    const QStringList paths = chooseFiles(tr("Add Measurements"), {measurementFilter(), tr("All files (*)")});
    if (!paths.isEmpty())
        m_controller->addFiles(paths);
}

std::optional<std::filesystem::path> FileCommands::askForSource(const MissingSource& missing)
{
    QStringList places;
    for (const std::string& place : missing.places)
        places.append(textOfFile(place));
    const QString name = textOfFile(missing.name);
    QMessageBox question(QMessageBox::Question, QString(), tr("Where are the measurements “%1” now?").arg(name), QMessageBox::Open | QMessageBox::Cancel, m_window);
    question.setInformativeText(tr("“%1” shows them, and they are not here any more:\n%2\n\nOther measurements that are missing are looked for beside those that you choose.")
                                    .arg(nameOfFile(missing.document.string()), places.join(QLatin1Char('\n'))));
    showLetterByLetter(question);
    question.button(QMessageBox::Open)->setText(tr("&Choose…"));
    question.setDefaultButton(QMessageBox::Open);
    if (question.exec() != QMessageBox::Open)
        return std::nullopt;
    const QString start = textOfFile(missing.document.parent_path().string());
    const QString path = QFileDialog::getOpenFileName(m_window, tr("Choose “%1”").arg(name), start, tr("All files (*)"));
    return path.isEmpty() ? std::nullopt : std::optional<std::filesystem::path>(fileOfText(path));
}

void FileCommands::openFiles(const QStringList& paths)
{
    if (!paths.isEmpty() && mayLoseDocument())
        m_controller->open(paths);
}

void FileCommands::closeDocument()
{
    if (mayLoseDocument())
        m_controller->close();
}

bool FileCommands::mayLoseDocument()
{
    if (!m_controller->document().isModified())
        return true;
    QMessageBox question(QMessageBox::Question, QString(), tr("Save the changes to “%1”?").arg(QString::fromStdString(m_controller->document().displayName())),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_window);
    question.setInformativeText(tr("Looks and markers are lost otherwise. The measurements themselves are never changed."));
    showLetterByLetter(question);
    question.setDefaultButton(QMessageBox::Save);
    switch (question.exec()) {
    case QMessageBox::Save: return save();
    case QMessageBox::Discard: return true;
    default: return false;
    }
}

// Saving.

bool FileCommands::save()
{
    const auto& path = m_controller->document().path();
    return path.empty() ? saveAs() : saveTo(textOfFile(path.string()));
}

bool FileCommands::saveAs()
{
    const GraphDocument& document = m_controller->document();
    const QString suffix = QLatin1String(GraphDocument::kSuffix);
    QString proposed = textOfFile(document.path().string());
    if (proposed.isEmpty())
        proposed = QDir(folder()).filePath(QFileInfo(QString::fromStdString(document.displayName())).completeBaseName() + suffix);
    QFileDialog dialog(m_window, tr("Save Graph Document"), QFileInfo(proposed).absolutePath(), documentFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix.mid(1));
    dialog.selectFile(QFileInfo(proposed).fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    rememberFolderOf(dialog.selectedFiles().front());
    return saveTo(dialog.selectedFiles().front());
}

bool FileCommands::saveTo(const QString& path)
{
    return attempt(m_window, tr("The graph document could not be saved."), [&] {
        m_controller->save(path);
        emit message(tr("Saved as %1.").arg(QFileInfo(path).fileName()));
    });
}

// Pictures and paper.

void FileCommands::chooseAndExport()
{
    ExportDialog kind(m_window);
    if (kind.exec() != QDialog::Accepted)
        return;
    const QString name = QFileInfo(QString::fromStdString(m_controller->document().displayName())).completeBaseName() + kind.suffix();
    QFileDialog dialog(m_window, tr("Export"), folder(), kind.filter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kind.suffix().mid(1));
    dialog.selectFile(name);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    rememberFolderOf(dialog.selectedFiles().front());
    exportTo(dialog.selectedFiles().front(), kind.size(), kind.scale());
}

bool FileCommands::exportTo(const QString& path, const Size& size, double scale)
{
    return attempt(m_window, tr("The graph could not be exported."), [&] {
        exportDocument(m_controller->document(), fileOfText(path), size, scale);
        emit message(tr("Exported to %1.").arg(QFileInfo(path).fileName()));
    });
}

void FileCommands::showPrintPreview()
{
    PrintPreviewDialog dialog(m_graphWidget->view(), m_graphWidget->printInfo(), m_window);
    dialog.exec();
    m_graphWidget->setPrintInfo(dialog.printInfo());
}

} // namespace TOLVGraphing::app
