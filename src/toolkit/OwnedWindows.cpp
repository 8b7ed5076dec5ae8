#include "toolkit/OwnedWindows.h"

#include <QWindow>

void OwnedWindows::show(QWidget& window, const QWidget& owner) {
    if (!window.isVisible()) {
        window.winId();  // makes the native window, which the relation is told to
        window.windowHandle()->setTransientParent(owner.windowHandle());
        windows_.removeAll(nullptr);
        windows_.append(&window);
    }
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void OwnedWindows::release() {
    // A window above another one does not keep the program alive.
    for (const QPointer<QWidget>& window : windows_) {
        if (window != nullptr && window->windowHandle() != nullptr)
            window->windowHandle()->setTransientParent(nullptr);
    }
    windows_.clear();
}
