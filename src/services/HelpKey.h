#pragma once

#include <QObject>

/// F1 in all windows of the application: opens the help at the page of the part that has the focus, else of
/// its window. In windows without a page, such as boxes and the splash screen, F1 is a key like any other.
class HelpKey final : public QObject {
    Q_OBJECT

 public:
    /// Watches the application's keys while this object lives.
    HelpKey();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
