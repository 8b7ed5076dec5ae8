#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

/// Windows without modality that stay above the window that opened them, and outlive it: the program goes on
/// until the last of them is closed.
class OwnedWindows final {
 public:
    /// Shows a window above `owner`, or brings it to the front when it is open.
    void show(QWidget& window, const QWidget& owner);

    /// Lets the windows stand on their own. To be called when the owner closes.
    void release();

 private:
    QList<QPointer<QWidget>> windows_;
};
