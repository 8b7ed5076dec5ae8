#include "services/mHelp.h"

#include <QPointer>

#include "platform/Outside.h"
#include "platform/paths.h"
#include "toolkit/ChmFile.h"
#include "toolkit/HelpWindow.h"
#include "toolkit/OwnedWindows.h"

using namespace Qt::StringLiterals;

QString CestaNapovedy(qint16 kind) {
    return kind == 1 ? paths::inProgramFolder(u"\\data\\napoveda.chm") : QString();
}

void ZobrazNapovedu(qint16 kind, const QString& /*window*/) {
    static QPointer<HelpWindow> shown;
    if (shown == nullptr) {
        auto file = std::make_unique<ChmFile>(CestaNapovedy(kind));
        if (!file->isOpen()) {
            MsgBox(u"Soubor s nápovědou nebyl nalezen nebo je poškozený:\n"_s + CestaNapovedy(kind),
                   boxStyle::exclamation, u"Nápověda"_s);
            return;
        }
        shown = &makeSelfOwned<HelpWindow>(std::move(file));
        // An open help window does not keep the application running.
        shown->setAttribute(Qt::WA_QuitOnClose, false);
    }
    shown->showContents();
}
