#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QTimer>
#include <vector>

#include "platform/index.h"
#include "toolkit/LockKeys.h"

/// A status bar of panels, counted from 1. A panel grows with its text from its minimum width; the last one
/// takes the rest. Panels with the date, the time or a lock key update themselves; that of a lock key is
/// greyed while it is off and empty while its state is not known.
class StatusBar final : public QStatusBar {
    Q_OBJECT

 public:
    enum class Kind { text, date, time, capsLock, numLock };

    explicit StatusBar(QWidget* parent = nullptr, LockKeys::Source locks = LockKeys::usualSource());

    /// Adds a panel. @param width the minimum, in twips.
    void addPanel(Kind kind, int width);

    QString panelText(int panel) const { return label(panel).text(); }
    /// The panel grows with its text: a total that is cut reads as another number.
    void setPanelText(int panel, const QString& text);

 private:
    struct Panel {
        Kind kind;
        QLabel* label;
    };

    QLabel& label(int panel) const { return *elementAt(panels_, panel - 1).label; }
    void showClock();
    void showLocks();

    std::vector<Panel> panels_;
    LockKeys locks_;
    QTimer second_;
};
