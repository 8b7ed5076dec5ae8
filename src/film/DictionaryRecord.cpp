#include "film/DictionaryRecord.h"

#include "core/CatalogueQuery.h"
#include "platform/Outside.h"
#include "platform/text.h"
#include "toolkit/letters.h"
#include "toolkit/textBox.h"
#include "ui_DictionaryRecord.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shortestName = 3;

void paintField(QWidget& field, const QColor& back) {
    QPalette palette = field.palette();
    palette.setColor(QPalette::Base, back);
    // With a dark desktop theme the text would be light on a light field.
    palette.setColor(QPalette::Text, Qt::black);
    field.setPalette(palette);
}

}  // namespace

DictionaryRecord::DictionaryRecord(DictionaryRecordSource source, QWidget* parent)
    : QDialog(parent), source_(std::move(source)), ui_(std::make_unique<Ui::DictionaryRecord>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    setWindowTitle(source_.caption);
    connect(ui_->cmdSave, &QPushButton::clicked, this, &DictionaryRecord::save);
    connect(ui_->cmdStorno, &QPushButton::clicked, this, &QDialog::reject);
}

DictionaryRecord::~DictionaryRecord() = default;

void DictionaryRecord::ReadData() {
    const CatalogueQuery record(source_.loadSql + QString::number(zaznam_), CatalogueQuery::Failures::thrown);
    textBox::setText(*ui_->txtZanr, record->Fields(source_.nameColumn).Value().toText());
}

bool DictionaryRecord::Kontrola() {
    const bool complete = text::trim(ui_->txtZanr->text()).size() >= shortestName;
    paintField(*ui_->txtZanr, complete ? QColor(255, 255, 255) : QColor(250, 200, 200));
    return complete;
}

void DictionaryRecord::save() {
    if (!Kontrola()) {
        MsgBox(this, u"Název musí být vyplněn!"_s, boxStyle::plain, u"Chyba:"_s);
        return;
    }
    store();
    accept();
}

void DictionaryRecord::store() const {
    const CatalogueQuery record(source_.saveSql + QString::number(zaznam_), CatalogueQuery::Failures::thrown,
                                zaznam_ == 0);
    record->Fields(source_.nameColumn).setValue(ui_->txtZanr->text());
    record->Update();
}
