#pragma once

#include <QDialog>
#include <QList>
#include <QPointer>
#include <QWidget>
#include <memory>

/// Makes a window that owns itself: closing destroys it. Until it has been shown, an exception leaks it.
template <typename Window, typename... Arguments>
Window& makeSelfOwned(Arguments&&... arguments) {
    auto window = std::make_unique<Window>(std::forward<Arguments>(arguments)...);
    window->setAttribute(Qt::WA_DeleteOnClose);
    return *window.release();
}

/// Windows without modality that stay above the window that opened them, and outlive it: the program goes on
/// until the last of them is closed.
class OwnedWindows final {
 public:
    /// Shows the one window of its kind above `owner`: makes it anew, or brings it to the front when it is
    /// open. It goes away when it is closed, and `shared` with it.
    /// @param arguments what the window is made from.
    template <typename Window, typename... Arguments>
    void open(QPointer<Window>& shared, const QWidget& owner, Arguments&&... arguments) {
        if (shared == nullptr) shared = &makeSelfOwned<Window>(std::forward<Arguments>(arguments)...);
        show(*shared, owner);
    }

    /// Shows a window above `owner`, or brings it to the front when it is open.
    void show(QWidget& window, const QWidget& owner);

    /// Lets the windows stand on their own. To be called when the owner closes.
    void release();

 private:
    QList<QPointer<QWidget>> windows_;
};

/// Shows a dialog that has no parent modally above `owner`, until it is answered. One that is open without
/// modality becomes modal with what it holds.
void execAbove(QDialog& dialog, const QWidget& owner);
