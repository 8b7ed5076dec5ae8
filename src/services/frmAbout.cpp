#include "services/frmAbout.h"

#include "core/mVerze.h"
#include "toolkit/appTitle.h"
#include "toolkit/icons.h"
#include "toolkit/letters.h"
#include "ui_frmAbout.h"

using namespace Qt::StringLiterals;

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmAbout>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    setFixedSize(size());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    ui_->Picture1->setPixmap(icons::named(u"app"_s).pixmap(ui_->Picture1->size()));
    ui_->Label1->setText(appTitle() + u' ' + verze::text());
    connect(ui_->Command1, &QPushButton::clicked, this, &QDialog::accept);
}

frmAbout::~frmAbout() = default;
