#include "toolkit/tips.h"

#include <QAction>
#include <QEvent>
#include <QToolButton>

namespace {

class OwnTips final : public QObject {
 public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return false;
        const auto* button = qobject_cast<QToolButton*>(watched);
        const QAction* action = button != nullptr ? button->defaultAction() : nullptr;
        return action != nullptr && action->toolTip() == action->iconText();
    }
};

}  // namespace

void tips::onlyOwn(QToolBar& bar) {
    for (QToolButton* button : bar.findChildren<QToolButton*>())
        button->installEventFilter(new OwnTips(button));
}
