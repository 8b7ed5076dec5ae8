#include "toolkit/accessibility.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolBar>
#include <QToolButton>

#include "toolkit/ImageFrame.h"

using namespace Qt::StringLiterals;

namespace {

/// A picture frame; Qt takes an empty one for a label.
class Picture final : public QAccessibleWidget {
 public:
    explicit Picture(ImageFrame* frame) : QAccessibleWidget(frame, QAccessible::Graphic) {}

    QString text(QAccessible::Text kind) const override {
        const bool empty = !static_cast<const ImageFrame*>(object())->hasPicture();
        return kind == QAccessible::Description && empty ? u"bez obrázku"_s : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* describe(const QString& className, QObject* object) {
    // Qt asks with the name of each base class in turn, the most derived first. Objects of other classes must
    // not be cast: the browser engine's are not all what their meta-object says.
    if (className != u"ImageFrame" && className != u"QFrame" && className != u"QWidget") return nullptr;
    auto* widget = static_cast<QWidget*>(object);
    if (className == u"ImageFrame") return new Picture(static_cast<ImageFrame*>(widget));
    if (className == u"QFrame") return new QAccessibleWidget(widget, QAccessible::Grouping);
    // A widget that is no more than a QWidget by now is being destroyed, and must not be described again.
    if (className == u"QWidget" && widget->isWindow() && object->metaObject() != &QWidget::staticMetaObject)
        return new QAccessibleWidget(widget, QAccessible::Window);
    return nullptr;
}

}  // namespace

void accessibility::install() {
    QAccessible::installFactory(&describe);
}

void accessibility::nameParts(const QComboBox& box) {
    QString name = box.accessibleName();
    for (const QLabel* label : box.parentWidget()->findChildren<QLabel*>()) {
        if (name.isEmpty() && label->buddy() == &box) name = label->text();
    }
    box.view()->setAccessibleName(name);
    if (box.lineEdit() != nullptr) box.lineEdit()->setAccessibleName(name);
}

void accessibility::nameParts(const QToolBar& bar) {
    if (auto* more = bar.findChild<QToolButton*>(u"qt_toolbar_ext_button"_s))
        more->setAccessibleName(u"Další tlačítka"_s);
}
