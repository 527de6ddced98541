#include "ProblemDialog.h"

#include <QLabel>
#include <QMessageBox>

#include <exception>
#include <new>

namespace TOLVGraphing {

void showProblem(QWidget* parent, const QString& failure, const QString& reason)
{
    QMessageBox box(QMessageBox::Warning, QString(), failure, QMessageBox::Ok, parent);
    box.setInformativeText(reason);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    showLetterByLetter(box);
    box.exec();
}

void showLetterByLetter(QMessageBox& box)
{
    for (QLabel* label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
}

bool attempt(QWidget* parent, const QString& failure, const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (const std::bad_alloc&) {
        showProblem(parent, failure, QObject::tr("There is too little memory for it. Close other programs or use less data."));
    } catch (const std::exception& problem) {
        showProblem(parent, failure, QString::fromStdString(problem.what()));
    }
    return false;
}

} // namespace TOLVGraphing
