#include "mMain.h"

#include <QCoreApplication>

#include "catalogue/frmMaster.h"
#include "core/mDatabase.h"
#include "core/mFunction.h"
#include "platform/Outside.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "services/frmNewVersion.h"
#include "services/frmSplash.h"
#include "services/novaVerze.h"

using namespace Qt::StringLiterals;

namespace {

/// Checks for an existing file with "ddb" in its name; whether it is a catalogue shows when it is opened.
bool catalogueFileStands() {
    const QString name = text::lowerCase(text::trim(paths::Dir(ActDBPath)));
    return text::inStr(name, u"ddb") > 0;
}

}  // namespace

void Main(std::unique_ptr<frmMaster>& master) {
    ActDBPath = CtiNastaveni(u"ActDB"_s, paths::inProgramFolder(u"\\data\\data.ddb"));
    frmSplash().exec();
    if (!catalogueFileStands()) {
        MsgBox(u"Nenalezen soubor databáze!"_s, boxStyle::critical, u"Chyba:"_s);
        return;
    }
    const Sites sites = Sites::compiledIn();
    master = std::make_unique<frmMaster>(sites);
    master->show();
    QCoreApplication::processEvents();
    if (CtiNastaveni(u"ShowNewVer"_s, u"A"_s) == u"A" && JeNovaVerze(sites)) frmNewVersion(sites).exec();
}
