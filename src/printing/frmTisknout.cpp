#include "printing/frmTisknout.h"

#include <QCoreApplication>
#include <QScopeGuard>

#include "toolkit/icons.h"
#include "toolkit/keys.h"
#include "toolkit/letters.h"
#include "ui_frmTisknout.h"

using namespace Qt::StringLiterals;
using filmLists::Kind;

frmTisknout::frmTisknout(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmTisknout>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    setFixedSize(size());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    const auto printsOnClick = [this](const QPushButton* button, const QString& sql, Kind kind) {
        connect(button, &QPushButton::clicked, this, [this, sql, kind] { print(sql, kind); });
    };
    printsOnClick(ui_->Command1, u"SELECT * from tDVD ORDER BY CZJM"_s, Kind::simple);
    printsOnClick(ui_->Command2, u"SELECT * from tDVD ORDER BY DVDID DESC"_s, Kind::simple);
    printsOnClick(ui_->Command3, u"SELECT * from tDVD ORDER BY KatCisl ASC"_s, Kind::simple);
    printsOnClick(ui_->Command4, u"SELECT * from tDVD ORDER BY CZJM"_s, Kind::detailed);
}

frmTisknout::~frmTisknout() = default;

void frmTisknout::print(const QString& sql, Kind kind) {
    {
        ++running_;
        const auto over = qScopeGuard([this] { --running_; });
        filmLists::print(sql, kind, [] { QCoreApplication::processEvents(); });
    }
    if (running_ == 0 && closing_) reject();
}

void frmTisknout::done(int result) {
    // Until then the catalogue is being read and must not be changed from the main window.
    closing_ = running_ > 0;
    if (!closing_) QDialog::done(result);
}

void frmTisknout::keyPressEvent(QKeyEvent* event) {
    if (!keys::pressFocusedButton(*this, *event)) QDialog::keyPressEvent(event);
}
