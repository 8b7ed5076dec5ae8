#include "toolkit/OwnedWindows.h"

#include <QWindow>

namespace {

void putAbove(QWidget& window, const QWidget& owner) {
    window.winId();  // creates the native window, which the transient parent is set on
    window.windowHandle()->setTransientParent(owner.window()->windowHandle());
}

}  // namespace

void OwnedWindows::show(QWidget& window, const QWidget& owner) {
    if (!window.isVisible()) {
        putAbove(window, owner);
        windows_.removeAll(nullptr);
        windows_.removeAll(&window);
        windows_.append(&window);
    }
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void OwnedWindows::release() {
    // A window with a transient parent does not keep the application running.
    for (const QPointer<QWidget>& window : windows_) {
        if (window != nullptr && window->windowHandle() != nullptr)
            window->windowHandle()->setTransientParent(nullptr);
    }
    windows_.clear();
}

void execAbove(QDialog& dialog, const QWidget& owner) {
    dialog.hide();  // a visible window does not become modal
    putAbove(dialog, owner);
    dialog.exec();
}
