#include "lookup/frmNetFind.h"

#include <QCoreApplication>
#include <QShortcut>

#include "lookup/webText.h"
#include "platform/Outside.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "toolkit/icons.h"
#include "toolkit/keys.h"
#include "toolkit/letters.h"
#include "toolkit/textBox.h"
#include "toolkit/twips.h"
#include "ui_frmNetFind.h"

using namespace Qt::StringLiterals;

namespace {

// Twips.
constexpr int wideWidth = 8385;
constexpr int wideHeight = 5900;
constexpr int narrowWidth = 6030;
constexpr int narrowHeight = 3270;
constexpr int outOfSight = -10000;
constexpr int fieldsPlace = 45;

constexpr int tooMany = 20;

QString inData(const QString& name) {
    return paths::inProgramFolder(u"\\data\\"_s + name);
}

QString readPlainText(const QString& path) {
    return codepage::fromWindows1250(files::readAll(path));
}

void writePlainText(const QString& path, const QString& text) {
    files::write(path, {codepage::toWindows1250(text)});
}

}  // namespace

frmNetFind::frmNetFind(const Sites& sites, BrowserFactory& browsers, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmNetFind>()), sites_(sites) {
    ui_->setupUi(this);
    letters::scale(*this);
    boxes_ = LookupBoxes(*ui_, ui_->findPuvodni, ui_->Text1);
    icons::place(*this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    textBox::breakLongWords(*ui_->findPopis);
    textBox::selectFromEnd(*this);
    resizeTo(wideWidth, wideHeight);
    for (QWidget* later : QList<QWidget*>{ui_->Frame2, ui_->Frame1, ui_->framData, ui_->picWait})
        later->hide();
    connect(ui_->cmdDataGet, &QPushButton::clicked, this, &frmNetFind::loadSelected);
    connect(ui_->Command4, &QPushButton::clicked, this, [this] {
        if (!isVisible()) return;  // queued behind the click that closed the window
        accept();
        VlozitData = true;
    });
    connect(ui_->Command5, &QPushButton::clicked, this, &frmNetFind::reject);
    connect(ui_->Command1, &QPushButton::clicked, this, &frmNetFind::reject);
    // A focused browser takes all keys but those of shortcuts.
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &frmNetFind::reject);
    makeBrowsers(browsers);
    WebBrowser1_->Navigate(inData(u"null.htm"_s));
    wbrFind_->Navigate(inData(u"finddvd.htm"_s));
}

frmNetFind::~frmNetFind() = default;

void frmNetFind::makeBrowsers(BrowserFactory& browsers) {
    wbrFind_ = browsers.create(
        *this, {.BeforeNavigate2 = [this](const QString& url) { searchStarts(url); },
                .DocumentComplete = [this](const QString& url) { listIsThere(url); },
                .ProgressChange = [this](int progress, int maximum) { showProgress(progress, maximum); }});
    wbrFind_->widget().setObjectName(u"wbrFind"_s);
    wbrFind_->widget().setAccessibleName(u"Hledání v obchodě"_s);
    wbrFind_->widget().setGeometry(rect());
    wbrFind_->widget().lower();
    WebBrowser1_ =
        browsers.create(*this, {.BeforeNavigate2 = [](const QString&) {},
                                .DocumentComplete = [this](const QString& url) { filmIsThere(url); },
                                .ProgressChange =
                                    [this](int progress, int maximum) {
                                        showProgress(progress, maximum);
                                        yield();
                                    }});
    WebBrowser1_->widget().setObjectName(u"WebBrowser1"_s);
    WebBrowser1_->widget().setAccessibleName(u"Stránka filmu"_s);
    WebBrowser1_->widget().setEnabled(false);
    WebBrowser1_->widget().hide();
}

void frmNetFind::resizeTo(int width, int height) {
    setFixedSize(twips::toPixels(width), twips::toPixels(height));
}

void frmNetFind::PredpripravSTR(const QString& title) {
    QString page = readPlainText(paths::ignoringCase(inData(u"finddvd2.htm"_s)));
    page.replace(u"%%N%%"_s, PREVOD(text::trim(title)));
    const QString path = inData(u"finddvdx.htm"_s);
    writePlainText(path, page);
    wbrFind_->Navigate(path);
}

void frmNetFind::searchStarts(const QString& url) {
    if (url != sites_.shop + u"/seznam_video.php"_s) return;
    wbrFind_->widget().move(twips::toPixels(outOfSight), 0);
    wbrFind_->widget().setEnabled(false);  // a loaded page would take the keyboard focus
    ui_->Frame2->show();
    resizeTo(narrowWidth, narrowHeight);
}

void frmNetFind::listIsThere(const QString& url) {
    if (url != sites_.shop + u"/seznam_video.php"_s) return;
    resizeTo(narrowWidth, narrowHeight);
    ui_->Frame2->hide();
    ui_->Frame1->show();
    ui_->List1->clear();
    listPage_ = wbrFind_->innerHTML();
    NactiSeznamObchod();
    if (ui_->List1->count() > 0) {
        ui_->cmdDataGet->setEnabled(true);
        ui_->List1->setCurrentRow(0);
        ui_->List1->setFocus();
    }
    if (ui_->List1->count() >= tooMany) {
        MsgBox(this, u"Bylo nalezeno více než 20 záznamů,upřesněte zadání! "_s, boxStyle::information,
               u"Hledání přerušeno:"_s);
    }
}

void frmNetFind::NactiSeznamObchod() {
    for (const ListEntry& film : obchod::NactiSeznamObchod(listPage_)) {
        auto entry = std::make_unique<QListWidgetItem>(film.text);
        entry->setData(Qt::UserRole, film.itemData);
        ui_->List1->addItem(entry.release());
    }
    ui_->Frame1->setTitle(u"Nalezeno "_s + QString::number(ui_->List1->count()) + u" záznamů"_s);
}

void frmNetFind::loadSelected() {
    const QListWidgetItem* film = ui_->List1->currentItem();
    if (film == nullptr || !film->isSelected()) return;
    reading_ = true;
    setFocus();  // else Qt moves the focus on, to a button that leaves the window
    ui_->Frame2->show();
    ui_->Frame1->hide();
    WebBrowser1_->Navigate(sites_.shop + u"/zbozi_video.php?id_zbozi="_s +
                           QString::number(film->data(Qt::UserRole).toInt()));
}

void frmNetFind::filmIsThere(const QString& url) {
    if (url.isEmpty() || url == u"http:///" || url.contains(u"null.htm")) return;
    filmPage_ = WebBrowser1_->innerHTML();
    ui_->framData->move(twips::toPixels(fieldsPlace), twips::toPixels(fieldsPlace));
    ui_->framData->show();
    ui_->framData->raise();
    resizeTo(wideWidth, wideHeight);
    obchod::NactiDetailObchod(filmPage_, sites_.shop, *this);
    reading_ = false;
    ui_->Command4->setFocus(Qt::TabFocusReason);
}

void frmNetFind::showProgress(int progress, int maximum) {
    double percent = 0;
    skipFailure([&] {
        if (maximum == 0) throw RuntimeError(errors::divisionByZero);
        percent = text::roundToEven(100.0 * progress / maximum);
    });
    ui_->lblProg->setText(QString::number(percent) + u'%');
}

void frmNetFind::keyPressEvent(QKeyEvent* event) {
    // Events run while a page is being cut, and the key may have been meant for the list.
    if (reading_ && keys::isEnter(*event)) return;
    if (keys::pressFocusedButton(*this, *event)) return;
    if (!keys::isEnter(*event)) return QDialog::keyPressEvent(event);
    if (focusWidget() == ui_->List1 && !event->isAutoRepeat()) ui_->cmdDataGet->click();
}

void frmNetFind::reject() {
    VlozitData = false;
    QDialog::reject();
}

LookupResult frmNetFind::result() const {
    return boxes_.result(ui_->chkGetPicture->isChecked());
}

QString frmNetFind::text(LookupField field) const {
    return boxes_.text(field);
}

void frmNetFind::setText(LookupField field, const QString& text) {
    boxes_.setText(field, text);
}

void frmNetFind::showPicture(const QString& path) {
    ui_->picWenImgNahl->loadPicture(path);
}

void frmNetFind::repaintPicture() {
    ui_->picWenImgNahl->repaint();
}

void frmNetFind::stopBrowser() {
    WebBrowser1_->Stop();
}

void frmNetFind::showWait() {
    ui_->picWait->show();
    ui_->picWait->raise();
}

void frmNetFind::hideWait() {
    ui_->picWait->hide();
}

void frmNetFind::yield() {
    QCoreApplication::processEvents();
}
