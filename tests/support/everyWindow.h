#pragma once

#include <QList>

#include "catalogue/frmFindStr.h"
#include "catalogue/frmMaster.h"
#include "film/frmDVD.h"
#include "film/frmOddel.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanr.h"
#include "film/frmZanry.h"
#include "lookup/frmCSFDFind.h"
#include "lookup/frmNetFind.h"
#include "printing/frmFindObal.h"
#include "printing/frmTisknout.h"
#include "rental/SharedUser.h"
#include "rental/frmKlienti.h"
#include "rental/frmPujcDVD.h"
#include "services/frmAbout.h"
#include "services/frmNewVersion.h"
#include "services/frmSplash.h"
#include "support/FakeBrowser.h"

/// One of each form, over the catalogue of a TemporaryProgram.
class EveryWindow {
 public:
    EveryWindow() {
        // Their titles come from the windows that open them.
        prompt.setWindowTitle(u"Najít v českém názvu"_s);
        lending.Init(1, u"Čáp"_s);
    }

    QList<QWidget*> all() {
        return {&master,      &about,  &films,          &shop,   &editor,    &covers,
                &prompt,      &offer,  &splash,         &genres, &lending,   &lists,
                &departments, &rental, &user->loaded(), &genre,  &department};
    }

    std::shared_ptr<SharedUser> user = std::make_shared<SharedUser>();
    FakeBrowsers browsers;
    frmMaster master{Sites{}};
    frmAbout about;
    frmCSFDFind films{Sites{}};
    frmNetFind shop{Sites{}, browsers};
    frmDVD editor{Sites{}};
    frmFindObal covers{Sites{}};
    frmFindStr prompt;
    frmKlienti rental{user};
    frmNewVersion offer{Sites{}};
    frmOddel department;
    frmOddeleniList departments;
    frmPujcDVD lending{user};
    frmSplash splash;
    frmTisknout lists;
    frmZanr genre;
    frmZanry genres;
};
