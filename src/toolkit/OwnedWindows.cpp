#include "toolkit/OwnedWindows.h"

#include <QWindow>

namespace {

void putAbove(QWidget& window, const QWidget& owner) {
    window.winId();  // makes the native window, which the relation is told to
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
    // A window above another one does not keep the program alive.
    for (const QPointer<QWidget>& window : windows_) {
        if (window != nullptr && window->windowHandle() != nullptr)
            window->windowHandle()->setTransientParent(nullptr);
    }
    windows_.clear();
}

void execAbove(QDialog& dialog, const QWidget& owner) {
    dialog.hide();  // a window that is shown already does not become modal
    putAbove(dialog, owner);
    dialog.exec();
}
