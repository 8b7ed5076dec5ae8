#include "services/frmSplash.h"

#include "core/mVerze.h"
#include "toolkit/appTitle.h"
#include "toolkit/icons.h"
#include "toolkit/letters.h"
#include "ui_frmSplash.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int interval = 5000;  // milliseconds
}

frmSplash::frmSplash(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmSplash>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setFixedSize(size());
    setWindowTitle(appTitle());
    // Closing the first window must not quit the application.
    setAttribute(Qt::WA_QuitOnClose, false);
    ui_->picture->setPixmap(icons::named(u"splash"_s).pixmap(ui_->picture->size()));
    ui_->lblVersion->setText(u"Version "_s + verze::text());
    Timer1_.setObjectName(u"Timer1"_s);
    Timer1_.setSingleShot(true);
    Timer1_.setInterval(interval);
    connect(&Timer1_, &QTimer::timeout, this, &QDialog::accept);
}

frmSplash::~frmSplash() = default;

void frmSplash::keyPressEvent(QKeyEvent* /*event*/) {
    accept();
}

void frmSplash::showEvent(QShowEvent* event) {
    Timer1_.start();
    activateWindow();
    QDialog::showEvent(event);
}
