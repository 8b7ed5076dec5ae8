#include "catalogue/frmFindStr.h"

#include "toolkit/icons.h"
#include "toolkit/letters.h"
#include "ui_frmFindStr.h"

frmFindStr::frmFindStr(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmFindStr>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    setFixedSize(size());
    connect(ui_->Command1, &QPushButton::clicked, this, [this] {
        HledanyText = ui_->Text1->text();
        accept();
    });
}

frmFindStr::~frmFindStr() = default;
