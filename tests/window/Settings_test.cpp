#include "WindowTest.h"

#include <TOLVGraphing/platform/foundation/UserDefaults.h>
#include <TOLVGraphing/views/TOLVGraphView.h>
#include <apps/viewer/qt/Appearance.h>
#include <apps/viewer/qt/CopySettingsDialog.h>
#include <apps/viewer/qt/ExportDialog.h>
#include <apps/viewer/qt/ReadingStatus.h>
#include <hosts/qt6/GraphWidget.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>

#include <map>

namespace TOLVGraphing::app {

namespace {

class SettingsOfWindow : public WindowTest {};

TEST_F(SettingsOfWindow, aFixedCopySizeStartsWithAUsefulOne)
{
    CopySettingsDialog dialog;
    EXPECT_FALSE(dialog.isFixed()->isChecked());
    dialog.isFixed()->setChecked(true);
    dialog.accept();
    const auto defaults = UserDefaults::standardUserDefaults();
    EXPECT_TRUE(defaults->boolForKey(kUsesFixedCopySizeKey));
    EXPECT_EQ(defaults->integerForKey(kFixedCopyWidthKey), 612);
    EXPECT_EQ(defaults->integerForKey(kFixedCopyHeightKey), 396);
}

TEST_F(SettingsOfWindow, aFixedCopySizeIsKept)
{
    CopySettingsDialog first;
    first.isFixed()->setChecked(true);
    first.width()->setValue(300);
    first.accept();
    const CopySettingsDialog second;
    EXPECT_TRUE(second.isFixed()->isChecked());
    EXPECT_EQ(second.width()->value(), 300);
}

TEST_F(SettingsOfWindow, anExportStartsWithTheFormerOne)
{
    {
        ExportDialog dialog;
        EXPECT_EQ(dialog.suffix(), ".pdf");
        EXPECT_EQ(dialog.size(), (Size{640.0, 400.0}));
        auto* kind = dialog.findChild<QComboBox*>();
        kind->setCurrentIndex(kind->findData(".png"));
        dialog.findChildren<QDoubleSpinBox*>().front()->setValue(300.0);
        dialog.accept();
    }
    const ExportDialog dialog;
    EXPECT_EQ(dialog.suffix(), ".png");
    EXPECT_EQ(dialog.size(), (Size{300.0, 400.0}));
    EXPECT_EQ(dialog.scale(), 2.0);
}

TEST_F(SettingsOfWindow, recentFilesAreOfferedUntilTheListIsCleared)
{
    open({writeExample()});
    QMenu* recent = nullptr;
    for (QMenu* menu : window.menuBar()->findChildren<QMenu*>()) {
        if (menu->title() == "Open &Recent")
            recent = menu;
    }
    ASSERT_TRUE(recent);
    emit recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 3);
    window.files()->closeDocument();
    recent->actions().front()->trigger();
    EXPECT_TRUE(waitUntil([&] { return document().displayName() == "example.csv"; }));
    emit recent->aboutToShow();
    recent->actions().back()->trigger();
    emit recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 1);
    EXPECT_FALSE(recent->actions().front()->isEnabled());
}

TEST(ReadingInStatusBar, isShownWhenItTakesAWhileAndCanBeCancelled)
{
    ReadingStatus status;
    bool isCancelled = false;
    QObject::connect(&status, &ReadingStatus::cancelled, [&] { isCancelled = true; });
    status.start("a.csv");
    EXPECT_FALSE(status.isVisible());
    QElapsedTimer time;
    time.start();
    while (!status.isVisible() && time.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    ASSERT_TRUE(status.isVisible());
    auto* bar = status.findChild<QProgressBar*>();
    EXPECT_EQ(bar->maximum(), 0);
    status.progress("b.csv", 40);
    EXPECT_EQ(bar->maximum(), 100);
    EXPECT_EQ(bar->value(), 40);
    EXPECT_EQ(status.findChild<QLabel*>()->text(), "Reading b.csv");
    status.findChild<QPushButton*>()->click();
    EXPECT_TRUE(isCancelled);
    status.end();
    EXPECT_FALSE(status.isVisible());
}

TEST_F(SettingsOfWindow, panelsComeBackAsTheyWereLeft)
{
    auto* panel = window.findChild<QDockWidget*>("markers");
    ASSERT_TRUE(panel);
    EXPECT_TRUE(panel->toggleViewAction()->isChecked());
    panel->close();
    ASSERT_TRUE(window.close());
    MainWindow next;
    next.show();
    EXPECT_FALSE(next.findChild<QDockWidget*>("markers")->toggleViewAction()->isChecked());
    EXPECT_TRUE(next.findChild<QDockWidget*>("graph")->toggleViewAction()->isChecked());
}

TEST_F(SettingsOfWindow, darkColorsReachTheGraph)
{
    applyAppearance(GraphAppearance::Dark);
    EXPECT_TRUE(waitUntil([&] { return window.graphWidget()->isDark(); }));
    applyAppearance(GraphAppearance::Light);
    EXPECT_TRUE(waitUntil([&] { return !window.graphWidget()->isDark(); }));
    applyAppearance(GraphAppearance::FollowsPalette);
}

/// The actions of a menu and of those in it.
void collect(const QWidget& menu, std::multimap<QString, const QAction*>& keys)
{
    for (const QAction* action : menu.actions()) {
        for (const QKeySequence& key : action->shortcuts())
            keys.emplace(key.toString(), action);
        if (action->menu())
            collect(*action->menu(), keys);
    }
}

TEST_F(SettingsOfWindow, everyKeyOfTheMenusIsOneAction)
{
    std::multimap<QString, const QAction*> keys;
    collect(*window.menuBar(), keys);
    for (const auto& [key, action] : keys) {
        EXPECT_EQ(keys.count(key), 1U) << key.toStdString();
        EXPECT_EQ(action->shortcutContext(), Qt::WindowShortcut) << action->text().toStdString();
    }
    EXPECT_EQ(keys.count("Ctrl+O"), 1U);
    EXPECT_EQ(keys.count("Ctrl+Z"), 1U);
    EXPECT_EQ(keys.count("M"), 1U);
}

} // namespace

} // namespace TOLVGraphing::app
