#include "rental/frmUser.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include "core/CatalogueQuery.h"
#include "platform/Outside.h"
#include "platform/index.h"
#include "platform/text.h"
#include "toolkit/icons.h"
#include "toolkit/letters.h"
#include "toolkit/loadedText.h"
#include "toolkit/textBox.h"
#include "ui_frmUser.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int longestText = 50;
constexpr int longestCode = 10;

QString customerSql(const QString& id) {
    return u"SELECT * from tUser WHERE USID="_s + id;
}

void tellMissingCustomer(QWidget* form) {
    MsgBox(form, u"Záznam k úpravě nenalezen!"_s, boxStyle::critical, u"Chyba zápisu uživatele:"_s);
}

void showText(QLineEdit& box, const QString& stored, int limit) {
    // A stored text is shown in full even if it exceeds the limit.
    box.setMaxLength(std::max(limit, countOf(stored)));
    loadedText::show(box, stored);
}

void write(const ado::Recordset& customer, QStringView column, const QString& value) {
    skipFailure([&] { customer.Fields(column).setValue(value); });
}

}  // namespace

frmUser::frmUser(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmUser>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    setFixedSize(size());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    for (QPlainTextEdit* box : {ui_->txtUSADR, ui_->txtUSPOZN}) {
        textBox::limit(*box, longestText);
        textBox::breakLongWords(*box);  // a stored text may be longer
    }
    for (QLineEdit* box : findChildren<QLineEdit*>())
        textBox::keepLettersWhole(*box);
    connect(ui_->cmdSave, &QPushButton::clicked, this, &frmUser::save);
    connect(ui_->cmdStorno, &QPushButton::clicked, this, &QDialog::reject);
    empty();
}

frmUser::~frmUser() = default;

void frmUser::setUSID(qint32 id) {
    ui_->lblUSID->setText(QString::number(id));
    setUnread(false);
}

void frmUser::setUnread(bool unread) {
    unread_ = unread;
    ui_->Frame1->setDisabled(unread);
}

void frmUser::empty() {
    setUSID(0);
    for (QLineEdit* box : {ui_->txtUSNAME, ui_->txtUSPHONE, ui_->txtUSMAIL})
        showText(*box, {}, longestText);
    showText(*ui_->txtUSREGNUM, {}, longestCode);
    for (QPlainTextEdit* box : {ui_->txtUSADR, ui_->txtUSPOZN})
        loadedText::show(*box, {});
    stored_ = formContent::of(*this);
}

void frmUser::closeEvent(QCloseEvent* event) {
    QDialog::closeEvent(event);
    empty();
}

void frmUser::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Cancel) || formContent::of(*this) == stored_)
        QDialog::keyPressEvent(event);
}

void frmUser::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // Rather than the button pressed last.
    unread_ ? ui_->cmdStorno->setFocus() : ui_->txtUSREGNUM->setFocus();
}

void frmUser::ReadData() {
    readColumns();
    stored_ = formContent::of(*this);
}

void frmUser::readColumns() {
    const CatalogueQuery customers(customerSql(ui_->lblUSID->text()), CatalogueQuery::Failures::skipped);
    if (ui_->lblUSID->text() == u"0") return;
    setUnread(atEnd(*customers));
    if (unread_) return tellMissingCustomer(this);
    const auto read = [&](QStringView column, auto&& take) {
        skipFailure([&] { take(customers->Fields(column).Value().toText()); });
    };
    read(u"USNAME", [this](const QString& text) { showText(*ui_->txtUSNAME, text, longestText); });
    read(u"USADR", [this](const QString& text) { loadedText::show(*ui_->txtUSADR, text); });
    read(u"USPHONE", [this](const QString& text) { showText(*ui_->txtUSPHONE, text, longestText); });
    read(u"USMAIL", [this](const QString& text) { showText(*ui_->txtUSMAIL, text, longestText); });
    read(u"USPOZN", [this](const QString& text) { loadedText::show(*ui_->txtUSPOZN, text); });
    read(u"USREGNUM", [this](const QString& text) { showText(*ui_->txtUSREGNUM, text, longestCode); });
    read(u"USID", [this](const QString& text) { ui_->lblUSID->setText(text); });
}

void frmUser::save() {
    bool valid = false;
    Kontrola(valid);
    if (valid) SaveData();
    accept();  // in any case
}

void frmUser::Kontrola(bool& valid) {
    QString message;
    valid = false;
    if (text::trim(ui_->txtUSNAME->text()).isEmpty()) message += u"Jméno musí být vyplněno!\r\n"_s;
    if (text::trim(textBox::text(*ui_->txtUSADR)).isEmpty()) message += u"Adresa musí být vyplněno!\r\n"_s;
    if (message.isEmpty()) {
        valid = true;
    } else {
        MsgBox(this, message, boxStyle::information, u"Nelze uložit!"_s);
    }
}

void frmUser::SaveData() {
    CatalogueQuery customer(customerSql(ui_->lblUSID->text()), CatalogueQuery::Failures::skipped);
    if (ui_->lblUSID->text() == u"0") {
        skipFailure([&] { customer->AddNew(); });
    } else if (unread_ || atEnd(*customer)) {
        tellMissingCustomer(this);
        customer.close();  // so that the statements below have nothing to write to
    }
    write(*customer, u"USNAME", loadedText::toStore(*ui_->txtUSNAME));
    write(*customer, u"USADR", loadedText::toStore(*ui_->txtUSADR));
    write(*customer, u"USPHONE", loadedText::toStore(*ui_->txtUSPHONE));
    write(*customer, u"USMAIL", loadedText::toStore(*ui_->txtUSMAIL));
    write(*customer, u"USPOZN", loadedText::toStore(*ui_->txtUSPOZN));
    const QString code = loadedText::toStore(*ui_->txtUSREGNUM);
    const bool coded = !text::trim(code).isEmpty();
    if (coded) write(*customer, u"USREGNUM", code);
    bool stored = skipFailure([&] { customer->Update(); });
    if (!coded) {
        skipFailure([&] { ui_->lblUSID->setText(customer->Fields(u"USID").Value().toText()); });
        write(*customer, u"USREGNUM", ui_->lblUSID->text());
        stored = skipFailure([&] { customer->Update(); }) && stored;
    }
    if (stored) stored_ = formContent::of(*this);
}
