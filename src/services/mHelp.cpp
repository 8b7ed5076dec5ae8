#include "services/mHelp.h"

#include <QPointer>

#include "core/mFunction.h"
#include "platform/Outside.h"
#include "platform/paths.h"
#include "toolkit/ChmFile.h"
#include "toolkit/HelpWindow.h"
#include "toolkit/OwnedWindows.h"

using namespace Qt::StringLiterals;

namespace {

QString placeKey() {
    return u"HelpPlace"_s;
}

/// The place of the last reader; the setting can have been edited by hand.
HelpPlace lastPlace() {
    const QStringList parts = CtiNastaveni(placeKey(), {}).split(u'|');
    HelpPlace place{.page = parts.first()};
    if (parts.size() > 1) place.character = parts[1].toInt();
    if (parts.size() > 2 && parts[2].toInt() > 0) place.zoom = parts[2].toInt();
    return place;
}

void storePlace(const HelpPlace& place) {
    UlozNastaveni(placeKey(),
                  place.page + u'|' + QString::number(place.character) + u'|' + QString::number(place.zoom));
}

/// The help window: the open one, else a new one at `page`, or where it was left if that is empty. Null,
/// after a box, when there is no help file.
HelpWindow* helpWindow(qint16 kind, const QString& page) {
    static QPointer<HelpWindow> shown;
    if (shown != nullptr) return shown;
    auto file = std::make_unique<ChmFile>(CestaNapovedy(kind));
    if (!file->isOpen()) {
        MsgBox(u"Soubor s nápovědou nebyl nalezen nebo je poškozený:\n"_s + CestaNapovedy(kind),
               boxStyle::exclamation, u"Nápověda"_s);
        return nullptr;
    }
    HelpPlace place = lastPlace();
    if (!page.isEmpty()) place = {.page = page, .zoom = place.zoom};
    shown = &makeSelfOwned<HelpWindow>(std::move(file), place);
    QObject::connect(shown, &HelpWindow::left, shown, &storePlace);
    // An open help window does not keep the application running.
    shown->setAttribute(Qt::WA_QuitOnClose, false);
    return shown;
}

}  // namespace

QString CestaNapovedy(qint16 kind) {
    return kind == 1 ? paths::inProgramFolder(u"\\data\\napoveda.chm") : QString();
}

void ZobrazNapovedu(qint16 kind, const QString& /*window*/) {
    if (HelpWindow* const help = helpWindow(kind, {})) help->showContents();
}

void showHelpPage(const QString& page) {
    if (HelpWindow* const help = helpWindow(1, page)) help->showPage(page);
}
