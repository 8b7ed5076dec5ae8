#include "toolkit/StatusBar.h"

#include <QLocale>
#include <algorithm>

#include "platform/Outside.h"
#include "platform/dates.h"
#include "toolkit/twips.h"

using namespace Qt::StringLiterals;

namespace {

/// Shows a lock key as on, as off, or not at all while its state is not known. Read aloud, a greyed caption
/// would be an unavailable one.
void showLock(QLabel& label, const QString& caption, const QString& key, std::optional<bool> on) {
    label.setText(on.has_value() ? caption : QString());
    label.setEnabled(on.value_or(false));
    label.setAccessibleName(key + (!on.has_value() ? u": stav není znám"_s
                                   : *on           ? u" zapnut"_s
                                                   : u" vypnut"_s));
}

}  // namespace

StatusBar::StatusBar(QWidget* parent, LockKeys::Source locks) : QStatusBar(parent), locks_(this, locks) {
    connect(&locks_, &LockKeys::changed, this, &StatusBar::showLocks);
    connect(&second_, &QTimer::timeout, this, [this] {
        showClock();
        locks_.refresh();
    });
    second_.start(std::chrono::seconds(1));
}

void StatusBar::addPanel(Kind kind, int width) {
    if (!panels_.empty()) {
        // Only the last panel stretches.
        QLabel* last = panels_.back().label;
        removeWidget(last);
        addWidget(last);
        last->show();
    }
    auto* label = new QLabel(this);
    label->setObjectName(u"%1Panel_%2"_s.arg(objectName()).arg(panels_.size() + 1));
    label->setFrameShape(QFrame::StyledPanel);
    label->setFrameShadow(QFrame::Sunken);
    label->setTextFormat(Qt::PlainText);
    label->setMinimumWidth(twips::toPixels(width));
    if (kind != Kind::text) label->setAlignment(Qt::AlignCenter);
    addWidget(label, 1);
    panels_.push_back({kind, label});
    showClock();
    showLocks();
}

void StatusBar::setPanelText(int panel, const QString& text) {
    QLabel& shown = label(panel);
    shown.setText(text);
    shown.setMinimumWidth(std::max(shown.minimumWidth(), shown.sizeHint().width()));
}

void StatusBar::showClock() {
    const QDateTime now = Outside::current().now();
    for (const Panel& panel : panels_) {
        if (panel.kind == Kind::date) panel.label->setText(dates::toShown(now.date()));
        if (panel.kind == Kind::time)
            panel.label->setText(QLocale().toString(now.time(), QLocale::ShortFormat));
    }
}

void StatusBar::showLocks() {
    for (const Panel& panel : panels_) {
        if (panel.kind == Kind::capsLock)
            showLock(*panel.label, u"CAPS"_s, u"Caps Lock"_s, locks_.capsLock());
        if (panel.kind == Kind::numLock) showLock(*panel.label, u"NUM"_s, u"Num Lock"_s, locks_.numLock());
    }
}
