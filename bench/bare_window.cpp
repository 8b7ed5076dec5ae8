// The yardstick of start.cpp: a program that does nothing but show a main window of this kind.

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Bare window"));
    window.menuBar()->addMenu(QStringLiteral("Menu"));
    window.addToolBar(QStringLiteral("Bar"))->addAction(QStringLiteral("Button"));
    window.setCentralWidget(new QTreeView(&window));
    window.statusBar()->showMessage(QStringLiteral("Ready"));
    window.resize(718, 480);
    window.show();
    return QApplication::exec();
}
