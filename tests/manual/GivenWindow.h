#pragma once

#include <hosts/qt6/GraphWidget.h>

#include <QApplication>
#include <QMainWindow>

namespace TOLVGraphing::testing_support::given {

/// The application of statements that need one. It quits soon after the event loop has begun. So does every application that a program on a page makes; that one keeps a picture of its window as "window.png" before.
class Application {
public:
    Application();

private:
    int m_argumentCount = 1;
    char m_name[6] = "block";
    char* m_arguments[2] = {m_name, nullptr};
    QApplication m_application;
};

/// Shows the window and runs the event loop.
void show(QWidget& window);

} // namespace TOLVGraphing::testing_support::given
