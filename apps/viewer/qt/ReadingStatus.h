#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;
class QTimer;

namespace TOLVGraphing::app {

/// A reading in the status bar: which file, how far, and a button to cancel. Hidden while nothing is read, and for readings that are over in a moment.
class ReadingStatus final : public QWidget {
    Q_OBJECT

public:
    explicit ReadingStatus(QWidget* parent = nullptr);

    void start(const QString& files);
    void progress(const QString& file, int percent);
    void end();

signals:
    void cancelled();

private:
    QLabel* m_file = nullptr;
    QProgressBar* m_bar = nullptr;
    QTimer* m_delay = nullptr;
};

} // namespace TOLVGraphing::app
