#include "printing/frmFindObal.h"

#include <QCoreApplication>

#include "core/mDialog.h"
#include "core/stahniSoubor.h"
#include "platform/Outside.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "printing/coverPage.h"
#include "toolkit/Growth.h"
#include "toolkit/accessibility.h"
#include "toolkit/icons.h"
#include "toolkit/keys.h"
#include "toolkit/letters.h"
#include "toolkit/rowKey.h"
#include "toolkit/textBox.h"
#include "ui_frmFindObal.h"

using namespace Qt::StringLiterals;

namespace {

// Twips: a full disc cover of 27.5 by 18.5 cm.
constexpr int offset = 10;
constexpr int coverWidth = 15600;
constexpr int coverHeight = 10480;

QString coverFile() {
    return paths::inProgramFolder(u"\\data\\fobl.jpg");
}

}  // namespace

frmFindObal::frmFindObal(const Sites& sites, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmFindObal>()), sites_(sites) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    accessibility::nameParts(*ui_->Combo1);
    letGrow();
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    ui_->lvwDVD->setColumns({{u"Český název"_s, 3100}, {u"Původní název"_s, 3000}, {u"Info"_s, 1440}});
    ui_->lvwDVD->setAccessibleName(u"Nalezené obaly"_s);
    textBox::selectFromEnd(*this);
    showPreview(false);
    connect(ui_->Command1, &QPushButton::clicked, this, &frmFindObal::search);
    connect(ui_->Command4, &QPushButton::clicked, this, &frmFindObal::fetch);
    connect(ui_->Command2, &QPushButton::clicked, this, &frmFindObal::save);
    connect(ui_->Command3, &QPushButton::clicked, this, &frmFindObal::choosePrinter);
    connect(ui_->Command5, &QPushButton::clicked, this, [this] { showPreview(false); });
    connect(ui_->cmdSelectPrinterPrint, &QPushButton::clicked, this, &frmFindObal::printOnChosen);
}

frmFindObal::~frmFindObal() = default;

void frmFindObal::letGrow() {
    auto* growth = new Growth(*this, {0, 150});
    for (QWidget* wide : std::initializer_list<QWidget*>{ui_->Text1, ui_->Frame1, ui_->Label1})
        growth->add(*wide, {.right = 1});
    for (QWidget* large : std::initializer_list<QWidget*>{ui_->picHledani, ui_->Frame2, ui_->lvwDVD,
                                                          ui_->picNahled, ui_->Frame3, ui_->imgNahled})
        growth->add(*large, {.right = 1, .bottom = 1});
    growth->add(*ui_->Command1, {.left = 1, .right = 1});
    for (QWidget* button : {ui_->Command2, ui_->Command3})
        growth->add(*button, {.top = 1, .bottom = 1});
    for (QWidget* corner : std::initializer_list<QWidget*>{ui_->Command4, ui_->Command5, ui_->picPrinter})
        growth->add(*corner, {.left = 1, .top = 1, .right = 1, .bottom = 1});
    ui_->imgNahled->setMostSize(screen()->availableSize());
}

void frmFindObal::setTerm(const QString& term) {
    textBox::setText(*ui_->Text1, term);
}

void frmFindObal::keyPressEvent(QKeyEvent* event) {
    if (keys::pressFocusedButton(*this, *event)) return;
    if (keys::isEnter(*event)) {
        if (event->isAutoRepeat()) return;
        // Read first, as a click moves the focus.
        const QWidget* const focused = focusWidget();
        if (focused == ui_->Text1) ui_->Command1->click();
        if (focused == ui_->lvwDVD) ui_->Command4->click();
        if (focused == ui_->Combo1) ui_->cmdSelectPrinterPrint->click();
        return;
    }
    // Esc closes the topmost page first, and the window only from its first page.
    const bool escape = event->key() == Qt::Key_Escape;
    if (escape && ui_->picPrinter->isVisible()) {
        hidePrinters();
    } else if (escape && ui_->picNahled->isVisible()) {
        ui_->Command5->click();
    } else {
        QDialog::keyPressEvent(event);
    }
}

void frmFindObal::search() {
    ui_->lvwDVD->clear();
    const QString file = paths::inProgramFolder(u"\\data\\sezobf.htm");
    const QString url = sites_.cover + u"/covers.php?search="_s + text::trim(ui_->Text1->text());
    if (!StahniSoubor(url, file)) return;
    ZpracujZaznamy(codepage::fromWindows1250(files::readAll(file)));
}

void frmFindObal::ZpracujZaznamy(const QString& page) {
    const QStringList options = coverPage::ZpracujZaznamy(page);
    if (options.isEmpty()) {
        MsgBox(this, u"Obal nebyl nalezen."_s, boxStyle::information, u"Výsledek hledání"_s);
        return;
    }
    for (const QString& option : options)
        ZiskejData(option);
    ListView& list = *ui_->lvwDVD;
    if (!list.hasSelectedItem() && list.count() > 0) list.select(list.itemAt(0));
    list.setFocus();
}

void frmFindObal::ZiskejData(const QString& option) {
    const coverPage::Cover cover = coverPage::ZiskejData(option);
    skipFailure([&] {
        const ListItem row = ui_->lvwDVD->add(rowKey('D', cover.code), cover.czechTitle);
        row.setSubItem(1, cover.originalTitle);
        row.setSubItem(2, cover.language);
    });
    Err.Clear();
}

void frmFindObal::fetch() {
    QString code;
    skipFailure([&] { code = text::trim(rowCode(ui_->lvwDVD->selectedItem().key())); });
    if (StahniSoubor(sites_.cover + u"/support.php?DVDcover2="_s + code, coverFile())) {
        skipFailure([&] { ui_->imgNahled->loadPicture(coverFile()); });
        ui_->imgNahled->repaint();
        // Input made during the download is kept for the page shown next.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    } else {
        MsgBox(this, u"Chyba při stahování obalu"_s);
    }
    Err.Clear();
    showPreview(true);
}

void frmFindObal::showPreview(bool shown) {
    // Covered controls must not be reachable by keyboard.
    ui_->picHledani->setVisible(!shown);
    ui_->picNahled->setVisible(shown);
    ui_->picPrinter->hide();
    if (shown) {
        ui_->Command5->setFocus();
    } else if (ui_->lvwDVD->count() > 0) {
        ui_->lvwDVD->setFocus();
    } else {
        ui_->Text1->setFocus();
    }
}

void frmFindObal::save() {
    skipFailure([&] { files::copy(coverFile(), UlozitObrazek(this)); });
    Err.Clear();
}

void frmFindObal::choosePrinter() {
    const QStringList printers = Outside::current().printers();
    if (printers.isEmpty()) return print();
    for (const QString& printer : printers) {
        ui_->Combo1->addItem(printer);
        ui_->Combo1->setCurrentText(printer);
    }
    ui_->picPrinter->show();
    ui_->picPrinter->raise();
    ui_->Combo1->setFocus();
}

void frmFindObal::hidePrinters() {
    ui_->picPrinter->hide();
    ui_->Command3->setFocus();
}

void frmFindObal::printOnChosen() {
    hidePrinters();
    Outside::current().setPrinter(ui_->Combo1->currentText());
    try {
        print();
    } catch (const RuntimeError& failure) {
        // Only a printer that refuses is reported; a cover that is no picture ends the program.
        if (failure.number() != errors::printer) throw;
        MsgBox(this, failure.description(), boxStyle::exclamation, u"Tisk obalu"_s);
    }
}

void frmFindObal::print() {
    Outside::current().printPicture({.picture = coverFile(),
                                     .title = u"Obal DVD"_s,
                                     .landscape = true,
                                     .left = offset,
                                     .top = offset,
                                     .width = coverWidth,
                                     .height = coverHeight});
}
