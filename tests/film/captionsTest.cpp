#include <QAbstractButton>
#include <QLabel>

#include "film/editorFixture.h"

using namespace Qt::StringLiterals;

namespace {

/// Registered a second time at one and a half times the usual scale.
class CaptionsTest : public EditorTest {};

/// Captions of a window that need more room than they have.
QStringList clipped(const QWidget& window) {
    QStringList found;
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (label->text().isEmpty() || label->isHidden()) continue;
        if (label->sizeHint().width() > label->width() || label->fontMetrics().height() > label->height()) {
            found += label->objectName();
        }
    }
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (button->text().isEmpty()) continue;
        const bool choice = button->inherits("QCheckBox") || button->inherits("QRadioButton");
        const int needed = choice ? button->sizeHint().width()
                                  : button->fontMetrics().horizontalAdvance(button->text()) + 12;
        if (needed > button->width() || button->fontMetrics().height() > button->height())
            found += u"%1 needs %2 of %3"_s.arg(button->objectName()).arg(needed).arg(button->width());
    }
    return found;
}

}  // namespace

TEST_F(CaptionsTest, AreFullyReadableInTheEditor) {
    EXPECT_EQ(clipped(open(0)).join(u' '), u""_s);
}
