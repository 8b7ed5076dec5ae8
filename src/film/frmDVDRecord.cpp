// Loading a row of tDVD into the film editor's controls and saving it. Every database statement that fails is
// skipped.

#include "core/CatalogueQuery.h"
#include "core/mFunction.h"
#include "film/frmDVD.h"
#include "film/mObrazky.h"
#include "platform/Outside.h"
#include "platform/index.h"
#include "platform/text.h"
#include "toolkit/loadedText.h"
#include "toolkit/textBox.h"
#include "ui_frmDVD.h"

using namespace Qt::StringLiterals;

namespace {

QString filmSql(qint32 id) {
    return u"SELECT * from tDVD WHERE DVDID="_s + QString::number(id);
}

void tellMissingFilm(QWidget* editor) {
    MsgBox(editor, u"Záznam nenalezen! (cmdSAVE,frmDVD)"_s, boxStyle::critical, u"Chyba aplikace"_s);
}

template <typename Box>
void read(const ado::Recordset& films, QStringView column, Box& box) {
    skipFailure([&] { loadedText::show(box, films.Fields(column).Value().toText()); });
}

void write(const ado::Recordset& films, QStringView column, const DbValue& value) {
    skipFailure([&] { films.Fields(column).setValue(value); });
}

void updateRow(ado::Recordset& films) {
    skipFailure([&] { films.Update(); });
}

template <std::size_t Count>
std::vector<film::BoxValue> valuesOf(const std::array<QCheckBox*, Count>& boxes) {
    std::vector<film::BoxValue> values(Count);
    for (std::size_t box = 0; box < Count; ++box)
        values[box] = boxes[box]->isChecked() ? 1 : 0;
    return values;
}

/// Whether a stored picture key is set: neither Null nor 0.
bool isKey(const DbValue& value) {
    return !value.isNull() && value.toLong() != 0;
}

}  // namespace

template <std::size_t Count>
QString frmDVD::ZapisChk(const std::array<QCheckBox*, Count>& boxes) {
    return film::ZapisChk(valuesOf(boxes));
}

template <std::size_t Count>
void frmDVD::NactiChk(const std::array<QCheckBox*, Count>& boxes, const QString& tokens) {
    std::vector<film::BoxValue> values = valuesOf(boxes);
    film::NactiChk(values, tokens);
    for (std::size_t box = 0; box < Count; ++box)
        boxes[box]->setChecked(values[box] == 1);
}

qint32 frmDVD::VratJazyk() const {
    std::vector<bool> selected;
    selected.reserve(optJazyk_.size());
    for (const QRadioButton* option : optJazyk_)
        selected.push_back(option->isChecked());
    return film::VratJazyk(selected);
}

void frmDVD::NastavJazyk(qint32 jazyk) {
    elementAt(optJazyk_, film::NastavJazyk(jazyk, countOf(optJazyk_)))->setChecked(true);
}

void frmDVD::VycistiForm() {
    if (ui_->cboOddel->count() > 0) ui_->cboOddel->setCurrentIndex(0);
    ui_->txtZanr->clear();
    optJazyk_[0]->setChecked(true);
    textBox::setText(*ui_->txtDisk, u"1"_s);
    const auto untick = [](const auto& boxes) {
        for (QCheckBox* box : boxes)
            box->setChecked(false);
    };
    untick(chkMenu_);
    untick(chkSound_);
    untick(chkTitle_);
    for (ImageFrame* frame : imgObalDesk_)
        frame->loadPicture(QString());
    ui_->lblNahled->clear();
    ui_->lblObal->clear();
}

void frmDVD::Inicializuj(qint32 id) {
    Vysledek = 0;
    IDFilmu = id;
    VycistiForm();
    if (id != 0) readFilm();
    shown_ = formContent::of(*this);
}

void frmDVD::readFilm() {
    const CatalogueQuery films(filmSql(IDFilmu), CatalogueQuery::Failures::told);
    unread_ = atEnd(*films);
    // A failed open has been told already.
    if (films.opened() && unread_) tellMissingFilm(this);
    readColumns(*films);
    if (unread_) refuseInput();
}

void frmDVD::refuseInput() {
    // The save will not store it.
    for (QWidget* part :
         QList<QWidget*>{ui_->txtKatalog, ui_->txtCZName, ui_->cmdFindNet, ui_->Command4, ui_->tabMain})
        part->setEnabled(false);
    ui_->cmdStorno->setFocus();
}

void frmDVD::readColumns(const ado::Recordset& films) {
    read(films, u"CZJm", *ui_->txtCZName);
    read(films, u"PuvJm", *ui_->txtPuvName);
    read(films, u"KatCisl", *ui_->txtKatalog);
    read(films, u"Zanr", *ui_->txtZanr);
    read(films, u"DiskPocet", *ui_->txtDisk);
    read(films, u"Obsah", *ui_->txtPopis);
    read(films, u"Stat", *ui_->txtStat);
    read(films, u"Rezie", *ui_->txtRezie);
    read(films, u"Rok", *ui_->txtRok);
    read(films, u"Delka", *ui_->txtDelka);
    read(films, u"Herci", *ui_->txtHerci);
    read(films, u"Poznamka", *ui_->txtPozn);
    skipFailure([&] { NactiChk(chkMenu_, films.Fields(u"Nabidka").Value().toText()); });
    skipFailure([&] { NactiChk(chkSound_, films.Fields(u"JazykDetail").Value().toText()); });
    skipFailure([&] { NactiChk(chkTitle_, films.Fields(u"Titulky").Value().toText()); });
    skipFailure([&] { NastavJazyk(films.Fields(u"Jazyk").Value().toLong()); });
    skipFailure([&] {
        const DbValue cover = films.Fields(u"Obal_ID").Value();
        if (!isKey(cover)) return;
        ui_->lblObal->setText(ZobrazObal(cover.toLong()));
        imgObalDesk_[0]->loadPicture(ui_->lblObal->text());
    });
    skipFailure([&] {
        const DbValue preview = films.Fields(u"Nahled_ID").Value();
        if (!isKey(preview)) return;
        ui_->lblNahled->setText(ZobrazNahled(preview.toLong()));
        imgObalDesk_[1]->loadPicture(ui_->lblNahled->text());
    });
    skipFailure([&] {
        const qint16 index = NajdiItemData(*ui_->cboOddel->model(), films.Fields(u"Oddel_ID").Value(), -1);
        ui_->cboOddel->setCurrentIndex(index);
        if (index < 0) ui_->cboOddel->clearEditText();
    });
}

void frmDVD::save() {
    store();
    Vysledek = 1;
    hide();
}

void frmDVD::store() {
    const CatalogueQuery films(filmSql(IDFilmu), CatalogueQuery::Failures::told);
    if (atEnd(*films)) {
        if (IDFilmu != 0) {
            if (films.opened()) tellMissingFilm(this);
        } else {
            skipFailure([&] { films->AddNew(); });
        }
    } else if (unread_) {
        // Another program held the catalogue then, say: the empty controls must not be stored over the film.
        MsgBox(this,
               u"Film se při otevření nepodařilo načíst, proto se neuložil. V katalogu zůstal beze změny."_s,
               boxStyle::exclamation);
        return;
    }
    // Stores an empty row first, so that the database assigns its key.
    updateRow(*films);
    skipFailure([&] { ui_->txtDelka->setText(film::cleanLength(ui_->txtDelka->text())); });
    setColumns(*films);
    updateRow(*films);
    skipFailure([&] { IDFilmu = films->Fields(u"DVDID").Value().toLong(); });
    if (text::trim(ui_->txtKatalog->text()).isEmpty()) {
        write(*films, u"KatCisl", IDFilmu);
        updateRow(*films);
    }
    storePictures(*films);
}

void frmDVD::setColumns(const ado::Recordset& films) {
    write(films, u"CZJm", loadedText::toStore(*ui_->txtCZName));
    write(films, u"PuvJm", loadedText::toStore(*ui_->txtPuvName));
    const QString number = loadedText::toStore(*ui_->txtKatalog);
    if (!text::trim(number).isEmpty()) write(films, u"KatCisl", number);
    write(films, u"Zanr", loadedText::toStore(*ui_->txtZanr));
    skipFailure([&] { films.Fields(u"DiskPocet").setValue(text::toLong(ui_->txtDisk->text())); });
    write(films, u"Obsah", loadedText::toStore(*ui_->txtPopis));
    write(films, u"Jazyk", VratJazyk());
    write(films, u"Stat", loadedText::toStore(*ui_->txtStat));
    write(films, u"Rezie", film::storedDirector(loadedText::toStore(*ui_->txtRezie)));
    write(films, u"Delka", ui_->txtDelka->text());
    write(films, u"Rok", loadedText::toStore(*ui_->txtRok));
    if (const int department = departmentIndex(); department >= 0) {
        write(films, u"Oddel_ID", ui_->cboOddel->itemData(department).toInt());
    }
    write(films, u"Herci", loadedText::toStore(*ui_->txtHerci));
    write(films, u"Poznamka", loadedText::toStore(*ui_->txtPozn));
    write(films, u"Nabidka", ZapisChk(chkMenu_));
    write(films, u"JazykDetail", ZapisChk(chkSound_));
    write(films, u"Titulky", ZapisChk(chkTitle_));
    write(films, u"Obal_ID", 0);
    write(films, u"Nahled_ID", 0);
}

void frmDVD::storePictures(ado::Recordset& films) {
    const QString cover = ui_->lblObal->text();
    if (!cover.isEmpty()) {
        write(films, u"Obal_ID", UlozObal(IDFilmu, cover));
        updateRow(films);
    }
    const QString preview = ui_->lblNahled->text();
    if (!preview.isEmpty()) {
        qint32 key = 0;
        skipFailure([&] { key = UlozNahled(IDFilmu, preview); });
        write(films, u"nahled_ID", key);
        updateRow(films);
    }
}
