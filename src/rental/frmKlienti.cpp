#include "rental/frmKlienti.h"

#include <QKeyEvent>
#include <QLayout>
#include <QToolButton>
#include <algorithm>

#include "core/forEachRow.h"
#include "platform/Outside.h"
#include "platform/text.h"
#include "rental/SharedUser.h"
#include "rental/mPujcky.h"
#include "toolkit/OwnedWindows.h"
#include "toolkit/WaitCursor.h"
#include "toolkit/accessibility.h"
#include "toolkit/icons.h"
#include "toolkit/keys.h"
#include "toolkit/letters.h"
#include "toolkit/rowKey.h"
#include "toolkit/shades.h"
#include "toolkit/tips.h"
#include "toolkit/twips.h"
#include "ui_frmKlienti.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int codeColumn = 0;
constexpr int nameColumn = 1;
constexpr int addressColumn = 2;

// Twips.
constexpr int clientWidth = 6675;
constexpr int clientHeight = 4500;

constexpr qreal historyTitleSize = 9.75 / 8.25;  // beside other texts

const QColor titleStrip(82, 122, 190);
const QColor focusOnStrip(255, 190, 60);
const QColor historyBack(224, 224, 224);

/// The columns shown in a list row, looked up once for all rows.
struct CustomerFields {
    explicit CustomerFields(const ado::Recordset& customers)
        : id(customers.Fields(u"USID")),
          code(customers.Fields(u"USREGNUM")),
          name(customers.Fields(u"USNAME")),
          address(customers.Fields(u"USADR")) {}

    ado::Field id;
    ado::Field code;
    ado::Field name;
    ado::Field address;
};

QString inOneLine(QString address) {
    // Both have two characters, so nothing has to move.
    constexpr QStringView lineBreak = u"\r\n";
    constexpr QStringView comma = u", ";
    for (qsizetype at = 0; (at = address.indexOf(lineBreak, at)) >= 0; at += comma.size())
        std::copy(comma.begin(), comma.end(), address.begin() + at);
    return address;
}

void paintBack(QWidget& widget, const QColor& back, const QColor& text) {
    QPalette palette = widget.palette();
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base})
        palette.setColor(role, back);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text})
        palette.setColor(role, text);
    widget.setPalette(palette);
}

}  // namespace

frmKlienti::frmKlienti(std::shared_ptr<SharedUser> user, QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::frmKlienti>()), user_(std::move(user)) {
    ui_->setupUi(this);
    letters::scale(*this);
    icons::place(*this);
    // Dialogs stay above their owner on every desktop; this one is also resizable.
    setWindowFlags(Qt::Dialog | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    setMinimumSize(twips::toPixels(clientWidth), twips::toPixels(clientHeight));
    for (QWidget* panel : {ui_->picHistorie, ui_->picVratit, ui_->picVypujcit})
        panel->hide();
    paintPanels();
    buildList();
    buildToolBar();
    connectButtons();
    NactiList();
    ui_->lvwUsers->setFocus();
}

frmKlienti::~frmKlienti() = default;

void frmKlienti::paintPanels() {
    for (QFrame* strip : {ui_->Shape1, ui_->Shape2, ui_->Shape3}) {
        paintBack(*strip, titleStrip, Qt::white);
        // The default focus colour, that of selections, is hardly visible on the strip.
        QPalette palette = strip->palette();
        palette.setColor(QPalette::Highlight, focusOnStrip);
        strip->setPalette(palette);
    }
    if (!shades::isDark(palette())) paintBack(*ui_->picHistorie, historyBack, Qt::black);
    for (QWidget* panel : {ui_->picVratit, ui_->picVypujcit})
        panel->setBackgroundRole(QPalette::Base);
    QFont bold = font();
    bold.setBold(true);
    for (QLabel* title : {ui_->lblVratit, ui_->lblKZapujceni})
        title->setFont(bold);
    bold.setPointSizeF(bold.pointSizeF() * historyTitleSize);
    ui_->lblHist->setFont(bold);
}

void frmKlienti::buildList() {
    ui_->lvwUsers->setColumns({{u"Reg.č."_s, 700}, {u"Jméno"_s, 2500}, {u"Adresa"_s, 3000}});
    ui_->lvwUsers->setAccessibleName(u"Seznam zákazníků"_s);
}

void frmKlienti::buildToolBar() {
    connect(ui_->ShowUserHistory, &QAction::triggered, this, &frmKlienti::Historie_Obnovit);
    connect(ui_->keyHpujcka, &QAction::triggered, this, &frmKlienti::KVypujceni_Obnovit);
    connect(ui_->keyHVratit, &QAction::triggered, this, &frmKlienti::Vratit_Obnovit);
    // "Informace" does nothing. The tool bar is the only way to the panels, so it must take the focus.
    for (QToolButton* button : ui_->Toolbar1->findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::StrongFocus);
    ui_->Toolbar1->layout()->setContentsMargins(0, 0, 0, 0);  // to fit the low bar
    tips::onlyOwn(*ui_->Toolbar1);
    accessibility::nameParts(*ui_->Toolbar1);
}

void frmKlienti::connectButtons() {
    const auto onClick = [this](const QList<QPushButton*>& buttons, auto&& work) {
        for (QPushButton* button : buttons)
            connect(button, &QPushButton::clicked, this, work);
    };
    onClick({ui_->Command1}, &frmKlienti::addCustomer);
    onClick({ui_->Command3}, &frmKlienti::editCustomer);
    onClick({ui_->Command4}, &frmKlienti::findCustomer);
    onClick({ui_->Command6}, &frmKlienti::Vratit_Obnovit);
    onClick({ui_->Command12}, &frmKlienti::Historie_Obnovit);
    onClick({ui_->Command13}, &frmKlienti::KVypujceni_Obnovit);
    onClick({ui_->Command5, ui_->Command10}, [this] { hidePanel(*ui_->picVratit); });
    onClick({ui_->Command7, ui_->Command14}, [this] { hidePanel(*ui_->picVypujcit); });
    onClick({ui_->Command11}, [this] { hidePanel(*ui_->picHistorie); });
    onClick({ui_->Command8}, [this] {
        forSelected(*ui_->lstPujcit, &PujcDVD);
        hidePanel(*ui_->picVypujcit);
    });
    onClick({ui_->Command9}, [this] {
        forSelected(*ui_->lstVratit, &VratDVD);
        hidePanel(*ui_->picVratit);
    });
}

void frmKlienti::NactiList() {
    const ListView::Fill fill(*ui_->lvwUsers, ListView::Selected::first);
    ui_->lvwUsers->clear();
    std::optional<CustomerFields> fields;
    forEachRow(u"SELECT * from tUser order by USNAME"_s, [&](const ado::Recordset& customers) {
        if (!fields) fields.emplace(customers);
        const ListItem row =
            ui_->lvwUsers->add(rowKey('U', fields->id.Value().toLong()), fields->code.Value().toText());
        skipFailure([&] { row.setSubItem(nameColumn, fields->name.Value().toText()); });
        skipFailure([&] { row.setSubItem(addressColumn, inOneLine(fields->address.Value().toText())); });
    });
}

qint32 frmKlienti::selectedUSID() const {
    return ui_->lvwUsers->selectedItem().id();
}

void frmKlienti::addCustomer() {
    execAbove(user_->loaded(), *this);
    NactiList();
    user_->unload();
}

void frmKlienti::editCustomer() {
    {
        frmUser user(this);
        user.setUSID(selectedUSID());
        user.ReadData();
        user.exec();
    }
    NactiList();
}

void frmKlienti::findCustomer() {
    const QString needle = text::trim(text::upperCase(ui_->txtFindUser->text()));
    const int column = text::isNumeric(needle) ? codeColumn : nameColumn;
    ListView& list = *ui_->lvwUsers;
    for (int row = 0; row < list.count(); ++row) {
        if (text::inStr(text::trim(text::upperCase(list.cell(row, column))), needle) == 0) continue;
        const ListItem found = list.itemAt(row);
        list.select(found);
        list.ensureVisible(found);
        return;
    }
}

bool frmKlienti::nameCustomer(ElidedLabel& title, const QString& heading) {
    const bool named = skipFailure([&] {
        const ListItem customer = ui_->lvwUsers->selectedItem();
        title.setText(heading + customer.subItem(nameColumn) + u" ("_s + customer.text() + u')');
    });
    if (!named)
        MsgBox(this, u"Neexistuje osoba pro zapůjčení!"_s, boxStyle::information, u"Nepovolená operace:"_s);
    Err.Clear();
    return named;
}

void frmKlienti::Historie_Obnovit() {
    if (!nameCustomer(*ui_->lblHist, u"Historie výpůjček : "_s)) return;
    ui_->txtHistorie->clear();
    ui_->txtHistorie->setPlainText(history(selectedUSID()));
    showPanel(*ui_->picHistorie);
}

void frmKlienti::KVypujceni_Obnovit() {
    if (!nameCustomer(*ui_->lblKZapujceni, u"Volné filmy k zapůjčení : "_s)) return;
    ui_->lstPujcit->setEntries(freeFilms());
    showPanel(*ui_->picVypujcit);
}

void frmKlienti::Vratit_Obnovit() {
    if (!nameCustomer(*ui_->lblVratit, u"Vypůjčené filmy k vrácení: "_s)) return;
    const QString code = ui_->lvwUsers->selectedItem().text();
    auto films = filmsToReturn(code);
    if (!films) {
        ui_->lstVratit->setEntries({});  // another customer's films must not show behind the box
        MsgBox(this, u"Osobní kód \"%1\" není celé číslo, výpůjčky pod ním nelze vyhledat."_s.arg(code),
               boxStyle::information, u"Vrácení filmů"_s);
        films.emplace();
    }
    ui_->lstVratit->setEntries(std::move(*films));
    showPanel(*ui_->picVratit);
}

void frmKlienti::forSelected(const ListBox& films, void (*work)(qint32, qint32)) const {
    const WaitCursor wait;
    for (const int index : films.selectedEntries()) {
        const qint32 number = text::toLong(ui_->lvwUsers->selectedItem().text());
        work(number, films.entry(index).itemData);
    }
}

void frmKlienti::showPanel(QWidget& panel) {
    shown_.removeAll(&panel);
    shown_.append(&panel);
    panel.show();
    panel.raise();
    focusTop();
}

void frmKlienti::hidePanel(QWidget& panel) {
    shown_.removeAll(&panel);
    panel.hide();
    focusTop();
}

void frmKlienti::focusTop() {
    // Covered controls must not take keys meant for the panel.
    for (QWidget* covered : QList<QWidget*>{ui_->Frame1, ui_->Frame2, ui_->lvwUsers})
        covered->setEnabled(shown_.isEmpty());
    for (QWidget* panel : shown_)
        panel->setEnabled(panel == shown_.last());
    const QWidget* top = shown_.isEmpty() ? nullptr : shown_.last();
    QWidget* content = ui_->lvwUsers;
    if (top == ui_->picHistorie) content = ui_->txtHistorie;
    if (top == ui_->picVratit) content = ui_->lstVratit;
    if (top == ui_->picVypujcit) content = ui_->lstPujcit;
    content->setFocus();
}

void frmKlienti::keyPressEvent(QKeyEvent* event) {
    if (keys::pressFocusedButton(*this, *event)) return;
    if (event->key() == Qt::Key_Escape && !shown_.isEmpty()) {
        hidePanel(*shown_.last());
    } else if (event->key() == Qt::Key_Escape && focusWidget() != ui_->txtFindUser) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void frmKlienti::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // Extra size goes to the list, and so to the panels over it.
    const int wider = width() - twips::toPixels(clientWidth);
    const int higher = height() - twips::toPixels(clientHeight);
    ui_->lvwUsers->resize(twips::toPixels(6480) + wider, twips::toPixels(3015) + higher);
    ui_->Toolbar1->setGeometry(twips::toPixels(120), twips::toPixels(4080) + higher,
                               twips::toPixels(6480) + wider, twips::toPixels(330));
    const QRect covered = ui_->Frame1->geometry() | ui_->Frame2->geometry() | ui_->lvwUsers->geometry();
    for (QWidget* panel : {ui_->picHistorie, ui_->picVratit, ui_->picVypujcit})
        panel->setGeometry(covered);
}
