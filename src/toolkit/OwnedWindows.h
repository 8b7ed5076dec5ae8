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

/// Modeless windows that stay above the window that opened them, and outlive it: the application runs until
/// the last of them is closed.
class OwnedWindows final {
 public:
    /// Shows the only window of its kind above `owner`: creates it, or brings the open one to the front. It
    /// is destroyed when it is closed, which clears `shared`.
    /// @param arguments passed to the window's constructor.
    template <typename Window, typename... Arguments>
    void open(QPointer<Window>& shared, const QWidget& owner, Arguments&&... arguments) {
        if (shared == nullptr) shared = &makeSelfOwned<Window>(std::forward<Arguments>(arguments)...);
        show(*shared, owner);
    }

    /// Shows a window above `owner`, or brings it to the front if it is open. Beside an open one of its kind
    /// it is shown a little lower to the right, as far as the desktop lets windows be placed.
    void show(QWidget& window, const QWidget& owner);

    /// Detaches the windows from their owner, which must call this when it closes.
    void release();

 private:
    void placeBesideOthers(QWidget& window) const;

    QList<QPointer<QWidget>> windows_;
};

/// Runs a parentless dialog modally above `owner`. A dialog that is open modeless becomes modal and keeps its
/// content.
void execAbove(QDialog& dialog, const QWidget& owner);
