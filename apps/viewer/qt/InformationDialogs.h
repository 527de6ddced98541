#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace TOLVGraphing::app {

// Dialogs to read. They are modal and return when they are closed.

/// Keys and gestures of the graph and the window.
void showKeysAndGestures(QWidget* parent);
void showAbout(QWidget* parent);
/// What is to know about the measurements, one sentence a paragraph.
void showNotes(QWidget* parent, const QStringList& notes);

} // namespace TOLVGraphing::app
