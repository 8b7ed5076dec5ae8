#include "services/frmNewVersion.h"

#include "core/mFunction.h"
#include "platform/Outside.h"
#include "services/novaVerze.h"
#include "toolkit/icons.h"
#include "toolkit/keys.h"
#include "toolkit/letters.h"
#include "ui_frmNewVersion.h"

using namespace Qt::StringLiterals;

frmNewVersion::frmNewVersion(const Sites& sites, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmNewVersion>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    setFixedSize(size());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    ui_->Picture1->setPixmap(icons::named(u"newversion"_s).pixmap(ui_->Picture1->size()));
    ui_->Label1->setText(
        u"Na internetu je ke stažení nová verze aplikace.\n"
        "Kliknutím na tlačítko \"Stáhnout\" se spustí stažení souboru.\n\n"
        "Pokud budete chtít instalaci rovnou spustit musíte nejprve vypnout DVD Kalvéru!"_s);
    connect(ui_->Command1, &QPushButton::clicked, this,
            [address = newVersionAddress(sites)] { Outside::current().openWithDesktop(address); });
    connect(ui_->Command2, &QPushButton::clicked, this, &QDialog::reject);
    // At start the window can open while the user is typing; Enter must not start the download.
    ui_->Command2->setFocus();
}

frmNewVersion::~frmNewVersion() = default;

void frmNewVersion::done(int result) {
    UlozNastaveni(u"ShowNewVer"_s, ui_->chkNenabizet->isChecked() ? u"N"_s : u"A"_s);
    QDialog::done(result);
}

void frmNewVersion::keyPressEvent(QKeyEvent* event) {
    if (!keys::pressFocusedButton(*this, *event)) QDialog::keyPressEvent(event);
}
