#include "services/HelpKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <string_view>

#include "services/mHelp.h"

using namespace Qt::StringLiterals;

namespace {

/// Pages by class of a window, or by name of a part of one that has a page of its own.
constexpr struct {
    std::string_view name;
    const char16_t* page;
} helpPages[] = {{"frmMaster", u"/hlavni-okno.html"},
                 {"frmFindStr", u"/hledani-razeni.html"},
                 {"frmDVD", u"/editor.html"},
                 {"picTab_3", u"/obrazky.html"},  // the editor's covers
                 {"frmCSFDFind", u"/databaze.html"},
                 {"frmNetFind", u"/obchod.html"},
                 {"frmZanry", u"/ciselniky.html"},
                 {"frmZanr", u"/ciselniky.html"},
                 {"frmOddeleniList", u"/ciselniky.html"},
                 {"frmOddel", u"/ciselniky.html"},
                 {"frmKlienti", u"/modul.html"},
                 {"picHistorie", u"/historie.html"},  // of the rental window
                 {"frmUser", u"/zakaznik.html"},
                 {"frmPujcDVD", u"/pujceni.html"},
                 {"frmTisknout", u"/tisk.html"},
                 {"frmFindObal", u"/obaly.html"},
                 {"frmNewVersion", u"/nova-verze.html"},
                 {"frmAbout", u"/o-programu.html"},
                 {"DownloadWindow", u"/potize.html"}};

/// The page for a widget, or for what holds it; "" when there is none.
QString pageOf(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const QByteArray name = widget->objectName().toLatin1();
        for (const auto& entry : helpPages) {
            if (entry.name == widget->metaObject()->className() || entry.name == name.constData())
                return QString::fromUtf16(entry.page);
        }
        if (widget->isWindow()) break;
    }
    return {};
}

}  // namespace

HelpKey::HelpKey() {
    QApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier) return false;
    // Not by the receiver: keys arrive at the native window, and at an open menu first.
    const QWidget* const window = QApplication::activeWindow();
    const QWidget* const focus = window == nullptr ? nullptr : window->focusWidget();
    const QString page = pageOf(focus == nullptr ? window : focus);
    if (page.isEmpty()) return false;
    // An open menu or list would hold keys and mouse.
    while (QWidget* const popup = QApplication::activePopupWidget())
        popup->close();
    if (!key.isAutoRepeat()) showHelpPage(page);
    return true;
}
