#include "film/DictionaryList.h"

#include "core/CatalogueQuery.h"
#include "film/DictionaryRecord.h"
#include "toolkit/icons.h"
#include "toolkit/keys.h"
#include "toolkit/letters.h"
#include "toolkit/rowKey.h"
#include "ui_DictionaryList.h"

using namespace Qt::StringLiterals;

DictionaryList::DictionaryList(DictionaryListSource source, QWidget* parent)
    : QDialog(parent), source_(std::move(source)), ui_(std::make_unique<Ui::DictionaryList>()) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    setWindowTitle(source_.caption);
    ui_->lvwZanr->setColumns({{u"ID"_s, 600}, {u"Název Žánru"_s, 4000}});
    ui_->lvwZanr->setAccessibleName(source_.caption);
    ui_->Command1->setToolTip(source_.newTip);
    ui_->Command3->setToolTip(source_.editTip);
    connect(ui_->Command1, &QToolButton::clicked, this, &DictionaryList::addRecord);
    connect(ui_->Command3, &QToolButton::clicked, this, [this] { editRecord(); });
    ui_->lvwZanr->setFocus();
}

DictionaryList::~DictionaryList() = default;

void DictionaryList::paint(const ListItem& /*row*/, const ado::Recordset& /*records*/) {}

bool DictionaryList::canEdit(qint32 /*recordCount*/) const {
    return true;
}

void DictionaryList::Refresh_List() {
    const ListView::Fill fill(*ui_->lvwZanr);
    ui_->lvwZanr->clear();
    const CatalogueQuery records(source_.sql, CatalogueQuery::Failures::thrown);
    for (; !records->Eof(); records->MoveNext()) {
        const QString id = records->Fields(source_.idColumn).Value().toText();
        const ListItem row = ui_->lvwZanr->add(rowKey('Z', id), id);
        row.setSubItem(1, records->Fields(source_.nameColumn).Value().toText());
        paint(row, *records);
    }
    ui_->Command3->setEnabled(canEdit(records->RecordCount()));
}

DictionaryRecord& DictionaryList::loadRecord() {
    if (record_ == nullptr) record_ = makeRecord();
    return *record_;
}

void DictionaryList::unloadRecord() {
    record_.reset();
}

void DictionaryList::keyPressEvent(QKeyEvent* event) {
    if (!keys::pressFocusedButton(*this, *event)) QDialog::keyPressEvent(event);
}

void DictionaryList::addRecord() {
    DictionaryRecord& record = loadRecord();
    record.setZaznam(0);
    record.exec();
    unloadRecord();
    Refresh_List();
}

bool DictionaryList::editSelected() {
    DictionaryRecord& record = loadRecord();
    if (!ui_->lvwZanr->hasSelectedItem()) return false;
    record.setZaznam(ui_->lvwZanr->selectedItem().id());
    record.ReadData();
    record.exec();
    return true;
}
