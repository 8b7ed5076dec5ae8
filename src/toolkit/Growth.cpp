#include "toolkit/Growth.h"

#include <QEvent>
#include <cmath>

#include "toolkit/twips.h"

Growth::Growth(QWidget& window, const QSize& spare) : QObject(&window), first_(window.size()) {
    window.setMinimumSize(first_ - QSize(twips::scaled(spare.width()), twips::scaled(spare.height())));
    window.installEventFilter(this);
}

void Growth::add(QWidget& control, Shares shares) {
    followers_.push_back({&control, control.geometry(), shares});
}

bool Growth::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Resize)
        place(static_cast<const QWidget*>(parent())->size());
    return QObject::eventFilter(watched, event);
}

void Growth::place(const QSize& size) const {
    const auto part = [](int added, double share) { return static_cast<int>(std::lround(added * share)); };
    const QSize added = size - first_;
    for (const Follower& follower : followers_) {
        const Shares& shares = follower.shares;
        follower.control->setGeometry(
            follower.first.adjusted(part(added.width(), shares.left), part(added.height(), shares.top),
                                    part(added.width(), shares.right), part(added.height(), shares.bottom)));
    }
}
