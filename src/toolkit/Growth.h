#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <vector>

/// Lets the controls of a window without layouts follow its size: the window can then be made another than
/// laid out, and each edge of a control moves by its share of what has been added.
class Growth final : public QObject {
    Q_OBJECT

 public:
    /// Shares of the added width (left, right) and height (top, bottom), each from 0 to 1.
    struct Shares {
        double left = 0;
        double top = 0;
        double right = 0;
        double bottom = 0;
    };

    /// The window's present size is the one laid out for.
    /// @param spare how much smaller it may become, in pixels of the layout, for small screens.
    Growth(QWidget& window, const QSize& spare);

    /// Lets a control of the window follow, from its present place.
    void add(QWidget& control, Shares shares);

    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    struct Follower {
        QWidget* control;
        QRect first;
        Shares shares;
    };

    void place(const QSize& size) const;

    QSize first_;
    std::vector<Follower> followers_;
};
