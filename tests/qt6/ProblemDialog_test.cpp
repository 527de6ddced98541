#include <hosts/qt6/ProblemDialog.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

using namespace TOLVGraphing;

namespace {

/// Reads the texts of the dialog that comes up next, and how they are shown, and closes it.
class DialogReader {
public:
    DialogReader()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { read(); });
        m_timer.start(20);
    }

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] const QString& reason() const { return m_reason; }
    /// How many labels have a text, and how many of them show it letter by letter.
    [[nodiscard]] int labelCount() const { return m_labelCount; }
    [[nodiscard]] int plainLabelCount() const { return m_plainLabelCount; }

private:
    void read()
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        m_timer.stop();
        m_text = box->text();
        m_reason = box->informativeText();
        for (const QLabel* label : box->findChildren<QLabel*>()) {
            m_labelCount += label->text().isEmpty() ? 0 : 1;
            m_plainLabelCount += !label->text().isEmpty() && label->textFormat() == Qt::PlainText ? 1 : 0;
        }
        box->accept();
    }

    QTimer m_timer;
    QString m_text;
    QString m_reason;
    int m_labelCount = 0;
    int m_plainLabelCount = 0;
};

TEST(ProblemDialog, ShowsWordsOfFilesLetterByLetter)
{
    const DialogReader dialog;
    EXPECT_FALSE(attempt(nullptr, "“<i>page</i>.html” could not be opened.", [] { throw std::runtime_error("page.html:1: '<h1>Not found</h1>', expected numbers"); }));
    EXPECT_EQ(dialog.text(), "“<i>page</i>.html” could not be opened.");
    EXPECT_EQ(dialog.reason(), "page.html:1: '<h1>Not found</h1>', expected numbers");
    EXPECT_EQ(dialog.labelCount(), 2);
    EXPECT_EQ(dialog.plainLabelCount(), 2);
}

TEST(ProblemDialog, TellsOfShortMemoryInWordsForPeople)
{
    const DialogReader dialog;
    EXPECT_FALSE(attempt(nullptr, "The graph could not be copied.", [] { throw std::bad_alloc(); }));
    EXPECT_EQ(dialog.reason(), "There is too little memory for it. Close other programs or use less data.");
}

TEST(ProblemDialog, DoesNotComeWhereNothingFailsAndForWhatIsNoError)
{
    EXPECT_TRUE(attempt(nullptr, "Nothing failed.", [] {}));
    EXPECT_THROW(attempt(nullptr, "Nothing to show.", [] { throw 7; }), int);
}

} // namespace
