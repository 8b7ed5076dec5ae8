#include "rental/frmPujcDVD.h"

#include <QCloseEvent>

#include "platform/Outside.h"
#include "rental/SharedUser.h"
#include "rental/mPujcky.h"
#include "toolkit/OwnedWindows.h"
#include "toolkit/accessibility.h"
#include "toolkit/icons.h"
#include "toolkit/letters.h"
#include "ui_frmPujcDVD.h"

using namespace Qt::StringLiterals;

frmPujcDVD::frmPujcDVD(std::shared_ptr<SharedUser> user, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmPujcDVD>()), user_(std::move(user)) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    accessibility::nameParts(*ui_->Combo1);
    setFixedSize(size());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    ui_->Command3->hide();
    connect(ui_->Command1, &QPushButton::clicked, this, &frmPujcDVD::reject);
    connect(ui_->Command2, &QPushButton::clicked, this, [this] { answer([this] { Zapujcit(); }); });
    connect(ui_->Command4, &QPushButton::clicked, this, [this] {
        execAbove(user_->loaded(), *this);
        ReadData();
    });
    ReadData();
    ui_->Combo1->setFocus();
}

frmPujcDVD::~frmPujcDVD() = default;

void frmPujcDVD::Init(qint32 DVDID, const QString& Title) {
    // Escapes Qt's placeholder for the modified mark.
    setWindowTitle(u"Zapůjčit: "_s + QString(Title).replace(u"[*]"_s, u"[*][*]"_s));
    FilmID = DVDID;
}

void frmPujcDVD::ReadData() {
    const QSignalBlocker quiet(ui_->Combo1);
    ui_->Combo1->clear();
    for (const ListEntry& customer : customersByName())
        ui_->Combo1->addItem(customer.text, customer.itemData);
    ui_->Combo1->setCurrentIndex(ui_->Combo1->count() > 0 ? 0 : -1);
}

void frmPujcDVD::Zapujcit() {
    if (ui_->Combo1->currentIndex() == -1) {
        MsgBox(this, u"Není možné zapůjčit, neexistuje uživatel, je nutné ho nejprve vytvořit!"_s,
               boxStyle::critical, u"Půjčovna"_s);
        return;
    }
    PujcDVD(ui_->Combo1->currentData().toInt(), FilmID);
    close();
}

template <typename Work>
void frmPujcDVD::answer(Work&& work) {
    const bool first = !Ukonceno;
    Ukonceno = true;
    work();
    if (first) emit answered();
}

void frmPujcDVD::reject() {
    answer([this] { close(); });
}

void frmPujcDVD::closeEvent(QCloseEvent* event) {
    event->accept();
}
