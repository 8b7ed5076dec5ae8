#include "toolkit/barKeys.h"

#include <QKeyEvent>
#include <QToolButton>

#include "toolkit/accessibility.h"
#include "toolkit/keys.h"

namespace {

class BarKeys final : public QObject {
 public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        auto* button = qobject_cast<QToolButton*>(watched);
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (button == nullptr) return false;
        if (keys::isEnter(key)) {
            // Auto-repeat must not press it again.
            if (!key.isAutoRepeat()) button->click();
            return true;
        }
        if (button->menu() == nullptr || (key.key() != Qt::Key_Down && key.key() != Qt::Key_Menu))
            return false;
        button->showMenu();
        return true;
    }
};

}  // namespace

void barKeys::install(const QList<QToolBar*>& bars) {
    QWidget* before = nullptr;
    for (QToolBar* bar : bars) {
        accessibility::nameParts(*bar);
        for (QAction* action : bar->actions()) {
            auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action));
            if (button == nullptr) continue;
            button->setFocusPolicy(Qt::TabFocus);
            button->installEventFilter(new BarKeys(button));
            if (before != nullptr) QWidget::setTabOrder(before, button);
            before = button;
        }
    }
}
