#include "services/mHelp.h"

#include <QPointer>

#include "platform/Outside.h"
#include "platform/paths.h"
#include "toolkit/ChmFile.h"
#include "toolkit/HelpWindow.h"

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
        shown = std::make_unique<HelpWindow>(std::move(file)).release();
        shown->setAttribute(Qt::WA_DeleteOnClose);
        // Help goes with the program and does not keep it alive.
        shown->setAttribute(Qt::WA_QuitOnClose, false);
    }
    shown->showContents();
}
