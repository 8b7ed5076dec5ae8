// The window of the film editor: its lists, its genre panel and its pictures.

#include "film/frmDVD.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QListWidget>

#include "core/mDatabase.h"
#include "core/mDialog.h"
#include "core/mFunction.h"
#include "platform/Outside.h"
#include "platform/paths.h"
#include "toolkit/controlArray.h"
#include "ui_frmDVD.h"

using namespace Qt::StringLiterals;

namespace {

const QColor panelColour(255, 255, 192);

/// The steps that fill a list from a dictionary. A failure of a row is told in a box, and the next row
/// follows.
template <typename AddRow>
void fillFrom(const QString& sql, const QString& routine, AddRow&& addRow) {
    Err.Clear();
    skipFailure([] { OpenDB(); });
    OpenRS(sql, false);
    auto rows = RsDB;
    const auto notAtEnd = [&rows] {
        bool more = false;
        skipFailure([&] { more = !rows->Eof(); });
        return more;
    };
    bool more = notAtEnd();
    Err.Clear();
    while (more) {
        skipFailure([&] { addRow(*rows); });
        const bool moved = skipFailure([&] { rows->MoveNext(); });
        if (Err.pending()) {
            MsgBox(u"Chyba : "_s + routine + u", frmDVD\n"_s + Err.Description(), boxStyle::critical,
                   u"Chyba Aplikace"_s);
            Err.Clear();
        }
        more = moved && notAtEnd();
    }
    rows.reset();
    skipFailure([] { CloseRS(); });
    skipFailure([] { CloseDB(); });
    Err.Clear();
}

/// Folder of a chosen file, with the separator at its end. The last three characters, those of a file's
/// ending, are not looked at.
QString folderOf(const QString& path) {
    constexpr qsizetype ending = 3;
    for (qsizetype at = path.size() - ending; at >= 1; --at) {
        const QChar c = path[at - 1];
        if (c == u'\\' || c == QDir::separator()) return path.left(at);
    }
    return {};
}

}  // namespace

frmDVD::frmDVD(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmDVD>()) {
    ui_->setupUi(this);
    setFixedSize(size());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    findControlArrays();
    connectButtons();
    ui_->picZanr->hide();
    for (QWidget* panel : {static_cast<QWidget*>(ui_->picZanr), static_cast<QWidget*>(ui_->lstZanr)}) {
        QPalette palette = panel->palette();
        palette.setColor(QPalette::Base, panelColour);
        palette.setColor(QPalette::Window, panelColour);
        palette.setColor(QPalette::Text, Qt::black);
        panel->setPalette(palette);
    }
    ui_->cboOddel->setCompleter(nullptr);
    Refresh_ZanrLST();
    Refresh_OddelCBO();
    Inicializuj(0);
    ui_->txtKatalog->setFocus();
}

frmDVD::~frmDVD() = default;

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
    // The routine names the combo box that the list once was.
    fillFrom(u"SELECT * from tZanr"_s, u"Refresh_ZanrCBO"_s, [this](const ado::Recordset& rows) {
        auto entry = std::make_unique<QListWidgetItem>(rows.Fields(u"ZNAME").Value().toText());
        entry->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        entry->setCheckState(Qt::Unchecked);
        QListWidgetItem* added = entry.get();
        ui_->lstZanr->addItem(entry.release());
        added->setData(Qt::UserRole, rows.Fields(u"ZID").Value().toLong());
    });
}

void frmDVD::Refresh_OddelCBO() {
    ui_->cboOddel->clear();
    fillFrom(u"SELECT * from tOddeleni"_s, u"Refresh_OddelCBO"_s, [this](const ado::Recordset& rows) {
        ui_->cboOddel->addItem(rows.Fields(u"OdJm").Value().toText());
        ui_->cboOddel->setItemData(ui_->cboOddel->count() - 1, rows.Fields(u"ODID").Value().toLong());
    });
    if (ui_->cboOddel->count() == 0) ui_->cboOddel->setEditText(u"Combo1"_s);
}

void frmDVD::takeGenres() {
    QStringList chosen;
    for (int row = 0; row < ui_->lstZanr->count(); ++row) {
        const QListWidgetItem* entry = ui_->lstZanr->item(row);
        if (entry->checkState() == Qt::Checked) chosen += entry->text();
    }
    ui_->txtZanr->setText(film::genreText(chosen));
    closeGenres();
}

void frmDVD::closeGenres() {
    ui_->picZanr->hide();
    ui_->Command1->setFocus();
}

void frmDVD::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!ui_->picZanr->isVisible() || !(enter || event->key() == Qt::Key_Escape))
        return QDialog::keyPressEvent(event);
    enter ? takeGenres() : closeGenres();
    event->accept();
}

void frmDVD::choosePicture(int picture) {
    const bool cover = picture == 0;
    const QString path = cover ? OtevritObal(this) : OtevritNahled(this);
    imgObalDesk_[static_cast<std::size_t>(picture)]->loadPicture(path);
    // A cancelled dialog gives no path: the way to take a picture away.
    UlozNastaveni(cover ? u"Covers"_s : u"Nahled"_s, folderOf(path));
    (cover ? ui_->lblObal : ui_->lblNahled)->setText(path);
}

void frmDVD::copyPictureOut(int picture) {
    const QString source = paths::ignoringCase(
        paths::inProgramFolder(picture == 0 ? u"\\data\\obal.jpg" : u"\\data\\nahled.jpg"));
    const QString destination = UlozitObrazek(this);
    if (source.isEmpty() || destination.isEmpty()) return;
    if (!QFile::exists(source)) throw RuntimeError(errors::fileNotFound);
    if (QFileInfo(source) == QFileInfo(destination)) throw RuntimeError(errors::permissionDenied);
    if (QFile::exists(destination) && !QFile::remove(destination)) throw RuntimeError(errors::pathAccess);
    if (!QFile::copy(source, destination)) throw RuntimeError(errors::pathAccess);
}

int frmDVD::departmentIndex() const {
    const int index = ui_->cboOddel->currentIndex();
    return index >= 0 && ui_->cboOddel->itemText(index) == ui_->cboOddel->currentText() ? index : -1;
}
