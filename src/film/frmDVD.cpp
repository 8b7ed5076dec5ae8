// The window of the film editor: its lists, its genre panel and its pictures.

#include "film/frmDVD.h"

#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QShortcut>
#include <limits>

#include "core/CatalogueQuery.h"
#include "core/mDialog.h"
#include "core/mFunction.h"
#include "platform/Outside.h"
#include "platform/files.h"
#include "platform/index.h"
#include "platform/paths.h"
#include "toolkit/accessibility.h"
#include "toolkit/controlArray.h"
#include "toolkit/icons.h"
#include "toolkit/letters.h"
#include "toolkit/textBox.h"
#include "ui_frmDVD.h"

using namespace Qt::StringLiterals;

namespace {

const QColor panelColour(255, 255, 192);

/// Fills a list from a dictionary. A failure is shown in a box, and the next row follows.
template <typename AddRow>
void fillFrom(QWidget* editor, const QString& sql, const QString& routine, AddRow&& addRow) {
    const CatalogueQuery rows(sql, CatalogueQuery::Failures::skipped);
    for (bool moved = true; moved && !atEnd(*rows);) {
        const bool added = skipFailure([&] { addRow(*rows); });
        moved = skipFailure([&] { rows->MoveNext(); });
        if (added && moved) continue;
        MsgBox(editor, u"Chyba : "_s + routine + u", frmDVD\n"_s + Err.Description(), boxStyle::critical,
               u"Chyba Aplikace"_s);
        Err.Clear();
    }
}

/// Folder of a file, with trailing separator. The last three characters, the file's suffix, are not searched.
QString folderOf(const QString& path) {
    constexpr qsizetype ending = 3;
    for (qsizetype at = path.size() - ending; at >= 1; --at) {
        if (path[at - 1] == QDir::separator()) return path.left(at);
    }
    return {};
}

}  // namespace

frmDVD::frmDVD(Sites sites, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmDVD>()), sites_(std::move(sites)) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    accessibility::nameParts(*ui_->cboOddel);
    setFixedSize(size());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    findControlArrays();
    connectButtons();
    ui_->picZanr->hide();
    paintGenrePanel();
    ui_->cboOddel->setCompleter(nullptr);
    // Typing never selects an entry, not even by its exact name.
    disconnect(ui_->cboOddel->lineEdit(), &QLineEdit::editingFinished, ui_->cboOddel, nullptr);
    disconnect(ui_->cboOddel->lineEdit(), &QLineEdit::returnPressed, ui_->cboOddel, nullptr);
    connect(ui_->cboOddel, &QComboBox::editTextChanged, this,
            [this] { departmentTyped_ = ui_->cboOddel->lineEdit()->isModified(); });
    connect(ui_->cboOddel, &QComboBox::activated, this, [this] { departmentTyped_ = false; });
    textBox::showStarts(*ui_->cboOddel);
    textBox::selectFromEnd(*this);
    for (QLineEdit* box : findChildren<QLineEdit*>())
        box->setMaxLength(std::numeric_limits<int>::max());
    for (QPlainTextEdit* box : findChildren<QPlainTextEdit*>())
        textBox::breakLongWords(*box);
    Refresh_ZanrLST();
    Refresh_OddelCBO();
    Inicializuj(0);
    ui_->txtKatalog->setFocus();
    // With the keys of X and Wayland Qt does not recognise its own sequence for the page before.
    const QList<QKeySequence> before = {Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, Qt::Key_Back};
    for (const auto& [keys, step] :
         {std::pair(QKeySequence::keyBindings(QKeySequence::NextChild), 1), {before, -1}}) {
        auto* turn = new QShortcut(this);
        turn->setKeys(keys);
        connect(turn, &QShortcut::activated, this, [this, step = step] {
            const int tabs = ui_->tabMain->count();
            ui_->tabMain->setCurrentIndex((ui_->tabMain->currentIndex() + step + tabs) % tabs);
        });
    }
}

frmDVD::~frmDVD() = default;

void frmDVD::paintGenrePanel() {
    QPalette palette = ui_->picZanr->palette();
    palette.setColor(QPalette::Window, panelColour);
    palette.setColor(QPalette::Text, Qt::black);
    // Check boxes stay white, to be visible on the panel.
    palette.setColor(QPalette::Base, Qt::white);
    ui_->picZanr->setPalette(palette);
    ui_->lstZanr->setPalette(palette);
    ui_->lstZanr->viewport()->setBackgroundRole(QPalette::Window);
}

void frmDVD::findControlArrays() {
    optJazyk_ = controlArray<QRadioButton, 3>(*this, u"optJazyk"_s);
    chkMenu_ = controlArray<QCheckBox, 5>(*this, u"chkMenu"_s);
    chkSound_ = controlArray<QCheckBox, 9>(*this, u"chkSound"_s);
    chkTitle_ = controlArray<QCheckBox, 7>(*this, u"chkTitle"_s);
    imgObalDesk_ = controlArray<ImageFrame, 2>(*this, u"imgObalDesk"_s);
}

void frmDVD::connectButtons() {
    connect(ui_->Command1, &QPushButton::clicked, this, [this] {
        ui_->picZanr->show();
        ui_->picZanr->raise();
        ui_->lstZanr->setFocus();
    });
    connect(ui_->Command2, &QPushButton::clicked, this, &frmDVD::takeGenres);
    connect(ui_->Command3, &QPushButton::clicked, this, &frmDVD::closeGenres);
    connect(ui_->cmdFindNet, &QPushButton::clicked, this, &frmDVD::lookUpInShop);
    connect(ui_->Command4, &QPushButton::clicked, this, &frmDVD::lookUpInFilmDatabase);
    connect(ui_->cmdSave, &QPushButton::clicked, this, &frmDVD::save);
    connect(ui_->cmdStorno, &QPushButton::clicked, this, [this] {
        Vysledek = 2;
        hide();
    });
    for (const int picture : {0, 1}) {
        QPushButton* open = picture == 0 ? ui_->cmdOpenObalPic : ui_->cmdOpenNahledPic;
        QPushButton* copy = picture == 0 ? ui_->cmdSaveObal : ui_->cmdSaveNahled;
        connect(open, &QPushButton::clicked, this, [this, picture] { choosePicture(picture); });
        connect(copy, &QPushButton::clicked, this, [this, picture] { copyPictureOut(picture); });
    }
}

void frmDVD::Refresh_ZanrLST() {
    ui_->lstZanr->clear();
    // The name in the box dates from when the list was a combo box.
    fillFrom(this, u"SELECT * from tZanr"_s, u"Refresh_ZanrCBO"_s, [this](const ado::Recordset& rows) {
        const QString name = rows.Fields(u"ZNAME").Value().toText();
        auto* entry = new QListWidgetItem(name, ui_->lstZanr);
        entry->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        entry->setCheckState(Qt::Unchecked);
        entry->setData(Qt::UserRole, rows.Fields(u"ZID").Value().toLong());
    });
}

void frmDVD::Refresh_OddelCBO() {
    ui_->cboOddel->clear();
    fillFrom(this, u"SELECT * from tOddeleni"_s, u"Refresh_OddelCBO"_s, [this](const ado::Recordset& rows) {
        ui_->cboOddel->addItem(rows.Fields(u"OdJm").Value().toText());
        ui_->cboOddel->setItemData(ui_->cboOddel->count() - 1, rows.Fields(u"ODID").Value().toLong());
    });
    if (ui_->cboOddel->count() == 0) ui_->cboOddel->setEditText(u"Combo1"_s);
    ui_->cboOddel->lineEdit()->setCursorPosition(0);
}

void frmDVD::takeGenres() {
    QStringList chosen;
    for (int row = 0; row < ui_->lstZanr->count(); ++row) {
        const QListWidgetItem* entry = ui_->lstZanr->item(row);
        if (entry->checkState() == Qt::Checked) chosen += entry->text();
    }
    textBox::setText(*ui_->txtZanr, film::genreText(chosen));
    closeGenres();
}

void frmDVD::closeGenres() {
    ui_->picZanr->hide();
    ui_->Command1->setFocus();
}

void frmDVD::keyPressEvent(QKeyEvent* event) {
    // Buttons take Enter themselves while they have the focus.
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (focusWidget() == ui_->lstZanr && enter) {
        takeGenres();
    } else if (ui_->picZanr->isVisible() && event->key() == Qt::Key_Escape) {
        // Wherever the focus is: Esc must not close the editor while the panel is open.
        closeGenres();
    } else if (!event->matches(QKeySequence::Cancel) || formContent::of(*this) == shown_) {
        QDialog::keyPressEvent(event);
    }
}

void frmDVD::choosePicture(int picture) {
    const bool cover = picture == 0;
    const QString path = cover ? OtevritObal(this) : OtevritNahled(this);
    elementAt(imgObalDesk_, picture)->loadPicture(path);
    // A cancelled dialog returns no path, which is how a picture is removed.
    UlozNastaveni(cover ? u"Covers"_s : u"Nahled"_s, folderOf(path));
    (cover ? ui_->lblObal : ui_->lblNahled)->setText(path);
}

void frmDVD::copyPictureOut(int picture) {
    const QString path = paths::ignoringCase(
        paths::inProgramFolder(picture == 0 ? u"\\data\\obal.jpg" : u"\\data\\nahled.jpg"));
    const QString destination = UlozitObrazek(this);
    if (path.isEmpty() || destination.isEmpty()) return;
    files::copy(path, destination);
}

int frmDVD::departmentIndex() const {
    return departmentTyped_ ? -1 : ui_->cboOddel->currentIndex();
}
