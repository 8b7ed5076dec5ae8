#include "lookup/frmCSFDFind.h"

#include <QCoreApplication>

#include "core/stahniSoubor.h"
#include "lookup/Module2.h"
#include "lookup/mCSFD.h"
#include "lookup/webText.h"
#include "platform/Outside.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "toolkit/Growth.h"
#include "toolkit/accessibility.h"
#include "toolkit/icons.h"
#include "toolkit/keys.h"
#include "toolkit/letters.h"
#include "toolkit/textBox.h"
#include "toolkit/twips.h"
#include "ui_frmCSFDFind.h"

using namespace Qt::StringLiterals;

namespace {

// Twips.
constexpr int windowWidth = 9570;
constexpr int windowHeight = 5820;
constexpr int fieldsLeft = 90;
constexpr int fieldsTop = 30;

/// Downloads a URL into a file; true on success.
bool DwnFile(const QString& url, const QString& path) {
    return StahniSoubor(url, path);
}

}  // namespace

frmCSFDFind::frmCSFDFind(const Sites& sites, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmCSFDFind>()), sites_(sites) {
    ui_->setupUi(this);
    letters::scale(*this);
    boxes_ = LookupBoxes(*ui_, ui_->findPuvName, ui_->Text2);
    icons::place(*this);
    accessibility::nameParts(*ui_->findPuvName);
    resize(twips::toPixels(windowWidth), twips::toPixels(windowHeight));
    letGrow();
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    ui_->lvwSeznam->setColumns({{u"Název"_s, 2250}, {u"URL"_s, 600}});
    ui_->lvwSeznam->setAccessibleName(u"Nalezené filmy"_s);
    ui_->findPuvName->setCompleter(nullptr);
    ui_->findPuvName->setInsertPolicy(QComboBox::NoInsert);
    textBox::showStarts(*ui_->findPuvName);
    textBox::selectFromEnd(*this);
    textBox::breakLongWords(*ui_->findPopis);
    ui_->Picture2->setPixmap(icons::named(u"filmdb"_s).pixmap(ui_->Picture2->size()));
    ui_->picTime->hide();
    connect(ui_->Command1, &QPushButton::clicked, this, [this] { Hledej(ui_->Text1->text()); });
    connect(ui_->Command2, &QPushButton::clicked, this, &frmCSFDFind::readSelected);
    connect(ui_->cmdInsertData, &QPushButton::clicked, this, [this] {
        if (!isVisible()) return;  // queued behind the click that closed the window
        accept();
        VlozitData = true;
    });
    connect(ui_->cmdStorno, &QPushButton::clicked, this, &frmCSFDFind::reject);
    ui_->Text1->setFocus();
}

frmCSFDFind::~frmCSFDFind() = default;

void frmCSFDFind::letGrow() {
    // List and fields share what is added: titles and descriptions are both long.
    constexpr double half = 0.5;
    auto* growth = new Growth(*this, {0, 50});
    growth->add(*ui_->frmData, {.right = half, .bottom = 1});
    for (QWidget* field :
         std::initializer_list<QWidget*>{ui_->findCZ, ui_->findPuvName, ui_->findZanr, ui_->findStat,
                                         ui_->findRezie, ui_->findHerci, ui_->Text2})
        growth->add(*field, {.right = half});
    growth->add(*ui_->picWenImgNahl, {.left = half, .right = half});
    growth->add(*ui_->findPopis, {.right = half, .bottom = 1});
    for (QWidget* button : {ui_->cmdInsertData, ui_->cmdStorno})
        growth->add(*button, {.left = half, .top = 1, .right = half, .bottom = 1});
    growth->add(*ui_->Text1, {.left = half, .right = 1});
    growth->add(*ui_->Label3, {.left = half, .right = 1});
    growth->add(*ui_->Command1, {.left = 1, .right = 1});
    growth->add(*ui_->lvwSeznam, {.left = half, .right = 1, .bottom = 1});
    growth->add(*ui_->Label2, {.left = half, .top = 1, .right = 1, .bottom = 1});
    growth->add(*ui_->Command2, {.left = 1, .top = 1, .right = 1, .bottom = 1});
    growth->add(*ui_->picTime, {.left = half / 2, .top = half, .right = half / 2, .bottom = half});
}

void frmCSFDFind::setTerm(const QString& term) {
    textBox::setText(*ui_->Text1, term);
}

void frmCSFDFind::keyPressEvent(QKeyEvent* event) {
    if (keys::pressFocusedButton(*this, *event)) return;
    if (!keys::isEnter(*event)) return QDialog::keyPressEvent(event);
    // Enter in a data field must not start another search.
    if (event->isAutoRepeat()) return;
    // Read once: a search that finds films moves the focus to the list.
    const QWidget* const pressed = focusWidget();
    if (pressed == ui_->Text1) ui_->Command1->click();
    if (pressed == ui_->lvwSeznam) ui_->Command2->click();
}

void frmCSFDFind::reject() {
    QDialog::reject();
    VlozitData = false;
}

void frmCSFDFind::Hledej(const QString& term) {
    const QString file = paths::inProgramFolder(u"\\data\\list.find");
    const QString url =
        sites_.filmDb + u"/hledani-filmu-hercu-reziseru-ve-filmove-databazi/?search="_s + UpravText(term);
    if (!DwnFile(url, file)) {
        MsgBox(this, u"Pri stahovani doslo k chybe."_s);
        return;
    }
    buffers_.page = csfd::Page(NactiUTF8Soubor(file));
    yield();
    NactiSeznamFilmu();
}

void frmCSFDFind::NactiSeznamFilmu() {
    ListView& list = *ui_->lvwSeznam;
    QString page = buffers_.page.text();
    const std::vector<csfd::FoundFilm> films = csfd::NactiSeznamFilmu(page);
    buffers_.page = csfd::Page(page);
    for (const csfd::FoundFilm& film : films) {
        const ListItem row = list.add(u'F' + QString::number(list.count()), film.title);
        row.setSubItem(1, film.path);
    }
    if (!list.hasSelectedItem() && list.count() > 0) list.select(list.itemAt(0));
    // Enter then reads the film; in the search box it would append all of them again.
    if (!films.empty()) list.setFocus();
    showStage(u"Počet nalezených záznamů: "_s + QString::number(list.count()));
}

void frmCSFDFind::readSelected() {
    try {
        csfd::nactiDetail(sites_, buffers_, *this);
        ui_->cmdInsertData->setFocus();
    } catch (const RuntimeError& failure) {
        // Only this reading ends: the film being edited behind this window must not be lost.
        MsgBox(this, u"Chyba číslo %1:\n%2"_s.arg(failure.number()).arg(failure.description()),
               boxStyle::critical);
    }
}

LookupResult frmCSFDFind::result() const {
    return boxes_.result(ui_->chkGetPicture->isChecked());
}

int frmCSFDFind::selectedRow() const {
    return ui_->lvwSeznam->selectedItem().row();
}

QString frmCSFDFind::selectedPath() const {
    return ui_->lvwSeznam->selectedItem().subItem(1);
}

QString frmCSFDFind::text(LookupField field) const {
    return boxes_.text(field);
}

void frmCSFDFind::setText(LookupField field, const QString& text) {
    boxes_.setText(field, text);
}

void frmCSFDFind::clearOtherTitles() {
    ui_->findPuvName->clear();
    ui_->findPuvName->clearEditText();
}

void frmCSFDFind::addOtherTitle(const QString& title) {
    ui_->findPuvName->addItem(title);
}

void frmCSFDFind::showPicture(const QString& path) {
    ui_->picWenImgNahl->loadPicture(path);
}

void frmCSFDFind::showPosterChoice() {
    ui_->chkGetPicture->show();
}

void frmCSFDFind::untickPosterChoice() {
    ui_->chkGetPicture->setChecked(false);
}

void frmCSFDFind::showStage(const QString& caption) {
    ui_->Label2->setText(caption);
}

void frmCSFDFind::showWait() {
    ui_->frmData->move(twips::toPixels(fieldsLeft), twips::toPixels(fieldsTop));
    resize(twips::toPixels(windowWidth), twips::toPixels(windowHeight));
    ui_->picTime->show();
    ui_->picTime->raise();
}

void frmCSFDFind::hideWait() {
    ui_->picTime->hide();
}

void frmCSFDFind::repaintFields() {
    ui_->frmData->repaint();
}

void frmCSFDFind::yield() {
    QCoreApplication::processEvents();
}
