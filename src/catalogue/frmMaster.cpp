#include "catalogue/frmMaster.h"

#include <QCloseEvent>
#include <QToolButton>

#include "core/mChyba.h"
#include "core/mFunction.h"
#include "core/mVerze.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanry.h"
#include "platform/errors.h"
#include "platform/text.h"
#include "printing/frmTisknout.h"
#include "rental/SharedUser.h"
#include "rental/frmKlienti.h"
#include "services/frmAbout.h"
#include "services/mHelp.h"
#include "toolkit/appTitle.h"
#include "toolkit/barKeys.h"
#include "toolkit/icons.h"
#include "toolkit/letters.h"
#include "toolkit/tips.h"
#include "toolkit/twips.h"
#include "ui_frmMaster.h"

using namespace Qt::StringLiterals;

namespace {

// Twips.
constexpr int left = 165;
constexpr int top = 855;
constexpr int clientWidth = 10770;
constexpr int clientHeight = 6915;
constexpr int listLeft = 50;
constexpr int listSides = 100;
constexpr int listBottom = 10;

QString byCzechTitle() {
    return u"CZJM"_s;
}

QString byCatalogueNumber() {
    return u"KatCisl"_s;
}

/// Adds a button with a default action and a drop-down menu of related ones.
void addMenuButton(QToolBar* bar, QAction* before, QAction* face, const QList<QAction*>& entries) {
    auto* button = new QToolButton(bar);
    button->setObjectName(face->objectName() + u"Button"_s);
    button->setDefaultAction(face);
    button->setToolButtonStyle(bar->toolButtonStyle());
    button->setPopupMode(QToolButton::MenuButtonPopup);
    auto* menu = new QMenu(button);
    menu->addActions(entries);
    button->setMenu(menu);
    bar->insertWidget(before, button);
}

}  // namespace

frmMaster::frmMaster(Sites sites, QWidget* parent)
    : QMainWindow(parent),
      ui_(std::make_unique<Ui::frmMaster>()),
      sites_(std::move(sites)),
      user_(std::make_shared<SharedUser>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    lvwList_ = ui_->lvwList;
    buildList();
    buildStatusBar();
    buildToolBars();
    connectCommands();
    // The height excludes the menu bar.
    setGeometry(twips::toPixels(left), twips::toPixels(top), twips::toPixels(clientWidth),
                twips::toPixels(clientHeight) + ui_->menuBar->sizeHint().height());
    ui_->centralWidget->installEventFilter(this);

    setWindowTitle(appTitle() + u' ' + verze::text());
    NactiSeznam(byCzechTitle());
    SetColSizeStr();
    lvwList_->setFocus();
}

frmMaster::~frmMaster() = default;

void frmMaster::buildList() {
    lvwList_->setColumns({{u"Ev. číslo"_s, 900},
                          {u"CZ Název"_s, 2500},
                          {u"Žánr"_s, 1200},
                          {u"Půjčeno Komu"_s, 1200},
                          {u"Půjčeno kdy"_s, 1000},
                          {u"Původní název"_s, 1440},
                          {u"Jazyk"_s, 1440}});
    lvwList_->setAccessibleName(u"Seznam filmů"_s);
    hidMenuListItem_.setObjectName(u"hidMenuListItem"_s);
    // Screen readers find menus in the menu bar, hidden ones too.
    hidMenuListItem_.setTitle(u"Vybraný film"_s);
    ui_->menuBar->addMenu(&hidMenuListItem_)->setVisible(false);
    hidMenuListItem_.addActions({ui_->mnuListItem_0, ui_->mnuListItem_1, ui_->mnuListItem_2});
    hidMenuListItem_.addSeparator();
    hidMenuListItem_.addAction(ui_->mnuListItem_4);
    connect(lvwList_, &ListView::contextMenuAsked, this,
            [this](const QPoint& position) { hidMenuListItem_.popup(position); });
}

void frmMaster::buildStatusBar() {
    using Kind = StatusBar::Kind;
    ui_->sbMain->addPanel(Kind::date, 1000);
    ui_->sbMain->addPanel(Kind::time, 900);
    ui_->sbMain->addPanel(Kind::capsLock, 600);
    ui_->sbMain->addPanel(Kind::numLock, 550);
    ui_->sbMain->addPanel(Kind::text, 1440);
    ui_->sbMain->addPanel(Kind::text, 1440);
    ui_->sbMain->addPanel(Kind::text, 1440);
}

void frmMaster::buildToolBars() {
    addMenuButton(ui_->Toolbar1, ui_->keyPrint, ui_->keyFind,
                  {ui_->KeyFindCZ, ui_->KeyFindPUV, ui_->KeyFindKATNUM});
    addMenuButton(ui_->Toolbar1, ui_->keyPrint, ui_->SortCZName, {ui_->SortCZNameEntry, ui_->SortKatNum});
    const QList<QToolBar*> bars = {ui_->Toolbar2, ui_->tbDisk, ui_->Toolbar1};
    for (QToolBar* bar : bars)
        tips::onlyOwn(*bar);
    barKeys::install(bars);
}

void frmMaster::connectCommands() {
    for (QAction* action : {ui_->smnuDB_0, ui_->SortCZName, ui_->SortCZNameEntry}) {
        connect(action, &QAction::triggered, this, [this] { NactiSeznam(byCzechTitle()); });
    }
    connect(ui_->SortKatNum, &QAction::triggered, this, [this] { NactiSeznam(byCatalogueNumber()); });
    connect(ui_->KeyAddNew, &QAction::triggered, this, [this] { OtevritPridatZaznam(0); });
    for (QAction* action : {ui_->KeyEdit, ui_->mnuListItem_0}) {
        connect(action, &QAction::triggered, this, [this] { OtevritPridatZaznam(selectedFilm()); });
    }
    for (QAction* action : {ui_->KeyPujcitVratit, ui_->mnuListItem_1}) {
        connect(action, &QAction::triggered, this, &frmMaster::PujcitVratit);
    }
    connect(ui_->mnuListItem_2, &QAction::triggered, this, [this] { SmazatZaznam(selectedFilm()); });
    for (QAction* action : {ui_->keyFind, ui_->KeyFindCZ}) {
        connect(action, &QAction::triggered, this, [this] { najit(u"CZ"_s, u"Najít v českém názvu"_s); });
    }
    connect(ui_->KeyFindPUV, &QAction::triggered, this,
            [this] { najit(u"PUV"_s, u"Najít v původním názvu"_s); });
    connect(ui_->KeyFindKATNUM, &QAction::triggered, this,
            [this] { najit(u"KAT"_s, u"Najít katalogové číslo"_s); });
    connect(lvwList_, &ListView::columnClicked, this, &frmMaster::sortByColumn);
    connect(lvwList_, &ListView::selectionMoved, this, &frmMaster::enableCommands);
    connect(ui_->mnuCisl_0, &QAction::triggered, this, [this] { ownedWindows_.open(frmZanry_, *this); });
    connect(ui_->mnuCisl_1, &QAction::triggered, this,
            [this] { ownedWindows_.open(frmOddeleniList_, *this); });
    connect(ui_->smnuPujcovna_0, &QAction::triggered, this,
            [this] { ownedWindows_.open(frmKlienti_, *this, user_); });
    connect(ui_->smnuPujcovna_2, &QAction::triggered, this,
            [this] { ownedWindows_.show(user_->loaded(), *this); });
    connect(ui_->keyPrint, &QAction::triggered, this, [this] { frmTisknout(this).exec(); });
    connect(ui_->mnuFindObal, &QAction::triggered, this, [this] { findCover({}); });
    connect(ui_->mnuListItem_4, &QAction::triggered, this,
            [this] { findCover(text::trim(lvwList_->selectedItem().subItem(1))); });
    connect(ui_->smnuHelp_0, &QAction::triggered, this, [] { ZobrazNapovedu(1, u"Main"_s); });
    connect(ui_->smnuHelp_2, &QAction::triggered, this, &frmMaster::findNewVersion);
    connect(ui_->smnuHelp_4, &QAction::triggered, this, [this] { frmAbout(this).exec(); });
    connect(ui_->smnuDB_5, &QAction::triggered, this, &QWidget::close);
    // The two entries of "Zálohovat" do nothing: backups are made outside the program, where both files can
    // be copied whenever it is idle.
}

void frmMaster::enableCommands() {
    const bool selected = lvwList_->hasSelectedItem();
    for (QAction* action : {ui_->KeyEdit, ui_->KeyPujcitVratit, ui_->mnuListItem_0, ui_->mnuListItem_1,
                            ui_->mnuListItem_2, ui_->mnuListItem_4}) {
        action->setEnabled(selected);
    }
}

qint32 frmMaster::selectedFilm() const {
    return lvwList_->selectedItem().id();
}

void frmMaster::SetColSizeStr() {
    const QString stored = CtiNastaveni(u"ColSie"_s, QString());
    if (stored.isEmpty()) return;
    const QStringList widths = text::split(stored, u'|');
    for (int column = 0; column < lvwList_->columns(); ++column) {
        const bool set = skipFailure([&] {
            if (column >= widths.size()) throw RuntimeError(errors::subscriptOutOfRange);
            lvwList_->setColumnWidthInTwips(column, text::toLong(widths[column]));
        });
        if (set) continue;
        ChybaAplikace(u"Chyba :"_s + Err.Description(), u"frmMaster/Sub:SetColSizeStr"_s);
        Err.Clear();
        break;
    }
}

QString frmMaster::GetColSizeStr() const {
    QString widths;
    for (int column = 0; column < lvwList_->columns(); ++column) {
        widths += QString::number(lvwList_->columnWidthInTwips(column)) + u'|';
    }
    return widths;
}

void frmMaster::closeEvent(QCloseEvent* event) {
    UlozNastaveni(u"ColSie"_s, GetColSizeStr());
    ownedWindows_.release();
    event->accept();
}

bool frmMaster::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->centralWidget && event->type() == QEvent::Resize) placeList();
    return QMainWindow::eventFilter(watched, event);
}

void frmMaster::placeList() {
    // The central widget is the window without tool bars and status bar.
    const QSize inner = ui_->centralWidget->size();
    const int width = inner.width() - twips::toPixels(listSides);
    const int height = inner.height() - lvwList_->y() - twips::toPixels(listBottom);
    if (width < 0 || height < 0) return;
    lvwList_->setGeometry(twips::toPixels(listLeft), lvwList_->y(), width, height);
}
