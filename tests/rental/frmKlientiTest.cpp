#include "rental/frmKlienti.h"

#include <QAction>
#include <QToolBar>

#include "rental/SharedUser.h"
#include "rental/rentalFixture.h"
#include "toolkit/ListBox.h"
#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;

namespace {

const QString nobody = u"Neexistuje osoba pro zapůjčení!|64|Nepovolená operace:"_s;

class FrmKlientiTest : public RentalTest {
 protected:
    void SetUp() override {
        sql("INSERT INTO tDVD (DVDID, CZJm) VALUES (1, 'Žena'), (2, 'cesta'), (3, 'Čáp'), (4, 'Chata');"
            "INSERT INTO tUser (USID, USNAME, USADR, USREGNUM) VALUES (7, 'Novák', 'Praha', '12'),"
            " (12, 'Dvořák', 'Krátká 2' || char(13, 10) || 'Brno' || char(13, 10), '120'),"
            " (20, 'Žák', 'a' || char(10) || 'b', '5'), (3, 'Čermák', NULL, '3'), (9, 'Čapek', '', '7x'),"
            " (30, '', 'x', '8'), (4, 'Bez kódu', 'x', NULL);");
    }

    frmKlienti& window() {
        if (!window_) {
            window_.emplace(std::make_shared<SharedUser>());
            window_->show();
        }
        return *window_;
    }
    template <typename Control>
    Control& in(const char* name) {
        return control<Control>(window(), name);
    }
    ListView& list() { return in<ListView>("lvwUsers"); }
    void choose(const QString& key) { list().select(list().item(key)); }
    void press(const char* button) { click(window(), button); }
    /// Clicks a button of the tool bar.
    void open(const char* action) {
        QTest::mouseClick(in<QToolBar>("Toolbar1").widgetForAction(&in<QAction>(action)), Qt::LeftButton);
    }

    /// Names of the panels that are shown.
    QString panels() {
        QStringList shown;
        for (const char* panel : {"picHistorie", "picVratit", "picVypujcit"}) {
            if (in<QFrame>(panel).isVisible()) shown += QString::fromLatin1(panel);
        }
        return shown.join(u' ');
    }
    QString films(const char* box) {
        QStringList titles;
        for (int index = 0; index < in<ListBox>(box).listCount(); ++index)
            titles += in<ListBox>(box).entry(index).text;
        return titles.join(u", "_s);
    }
    /// Clicks on entries as one who holds Ctrl does.
    void pick(const char* box, const QList<int>& entries) {
        auto& films = in<ListBox>(box);
        for (const int index : entries) {
            QTest::mouseClick(films.viewport(), Qt::LeftButton, Qt::ControlModifier,
                              films.visualRect(films.model()->index(index, 0)).center());
        }
    }
    QString rows() {
        QStringList result;
        for (int number = 0; number < list().count(); ++number) {
            const ListItem row = list().itemAt(number);
            result += QStringList({row.key(), row.text(), row.subItem(1), row.subItem(2)}).join(u'|');
        }
        return result.join(u'\n');
    }

 private:
    std::optional<frmKlienti> window_;
};

}  // namespace

TEST_F(FrmKlientiTest, CustomersStandByNameWithTheirCodeAndTheAddressInOneLine) {
    EXPECT_EQ(rows(),
              u"U30|8||x\nU9|7x|Čapek|\nU3|3|Čermák|\nU12|120|Dvořák|Krátká 2, Brno, \n"
              "U7|12|Novák|Praha\nU20|5|Žák|a\nb"_s);
    EXPECT_EQ(list().selectedItem().key(), u"U30"_s);
    EXPECT_EQ(panels(), u""_s);
}

TEST_F(FrmKlientiTest, WithoutCustomersNoPanelOpensAndNothingCanBeEdited) {
    sql("DELETE FROM tUser");
    for (const char* button : {"ShowUserHistory", "keyHpujcka", "keyHVratit"}) {
        open(button);
        EXPECT_EQ(outside.told(), nobody) << button;
        EXPECT_EQ(panels(), u""_s);
    }
    press("Command4");
    EXPECT_EQ(outside.told(), u""_s);
    EXPECT_EQ(failureOf([this] { in<QPushButton>("Command3").click(); }), errors::objectNotSet);
}

TEST_F(FrmKlientiTest, EachButtonOpensItsPanelForTheSelectedCustomerOverTheList) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky, PDatVraceni) VALUES"
        " (12, 1, '2026-01-01', '2026-02-01 10:00:00'), (120, 2, '2026-01-01', '2026-02-02 10:00:00'),"
        " (12, 3, '2026-01-01', NULL), (120, 4, '2026-01-01', NULL), (12, 4, '2026-01-01', NULL)");
    choose(u"U12"_s);
    open("ShowUserHistory");
    EXPECT_EQ(in<QLabel>("lblHist").text(), u"Historie výpůjček : Dvořák (120)"_s);
    EXPECT_EQ(in<QPlainTextEdit>("txtHistorie").toPlainText(), u"Žena vráceno : 01.02.2026 10:00:00\n"_s);
    open("keyHVratit");
    EXPECT_EQ(in<QLabel>("lblVratit").text(), u"Vypůjčené filmy k vrácení: Dvořák (120)"_s);
    EXPECT_EQ(films("lstVratit"), u"Chata"_s);
    open("keyHpujcka");
    EXPECT_EQ(in<QLabel>("lblKZapujceni").text(), u"Volné filmy k zapůjčení : Dvořák (120)"_s);
    EXPECT_EQ(films("lstPujcit"), u"cesta, Žena"_s);
    EXPECT_EQ(panels(), u"picHistorie picVratit picVypujcit"_s);
    window().resize(window().size() + QSize(200, 100));
    for (const char* panel : {"picHistorie", "picVratit", "picVypujcit"}) {
        EXPECT_TRUE(in<QFrame>(panel).geometry().contains(list().geometry())) << panel;
        EXPECT_FALSE(in<QFrame>(panel).geometry().intersects(in<QToolBar>("Toolbar1").geometry()));
    }
}

TEST_F(FrmKlientiTest, TheSearchSelectsTheFirstRowThatHoldsTheTerm) {
    const std::pair<QString, QString> cases[] = {
        {u"12"_s, u"U12"_s},  {u"120"_s, u"U12"_s},     {u" 3 "_s, u"U3"_s},    {u"999"_s, u"U20"_s},
        {u"řÁK"_s, u"U12"_s}, {u" nOVÁK  "_s, u"U7"_s}, {u"ák"_s, u"U3"_s},     {u"7x"_s, u"U20"_s},
        {u"-3"_s, u"U20"_s},  {u"1 2"_s, u"U20"_s},     {u"Praha"_s, u"U20"_s}, {u""_s, u"U9"_s},
        {u"   "_s, u"U9"_s},  {u"novak"_s, u"U20"_s},   {u"7"_s, u"U9"_s}};
    auto& term = in<QLineEdit>("txtFindUser");
    for (const auto& [typed, found] : cases) {
        choose(u"U20"_s);
        term.setText(typed);
        term.setFocus();
        QTest::keyClick(&term, Qt::Key_Return);
        for (int time = 0; time < 2; ++time) {
            press("Command4");
            EXPECT_EQ(list().selectedItem().key(), found) << typed.toStdString();
        }
    }
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FrmKlientiTest, SelectedFilmsAreLentAndReturnedInBulkUnderTheCode) {
    choose(u"U12"_s);
    open("keyHpujcka");
    EXPECT_EQ(films("lstPujcit"), u"cesta, Čáp, Chata, Žena"_s);
    press("Command8");  // with nothing selected
    EXPECT_EQ(panels() + loans(), u""_s);
    open("keyHpujcka");
    pick("lstPujcit", {3, 0, 2});
    press("Command8");
    EXPECT_EQ(loans(), u"120 2 2026-03-09 08:05:03, 120 4 2026-03-09 08:05:03, 120 1 2026-03-09 08:05:03"_s);
    EXPECT_EQ(panels(), u""_s);

    open("keyHVratit");
    EXPECT_EQ(films("lstVratit"), u"cesta, Chata, Žena"_s);
    pick("lstVratit", {0, 1, 2, 1});
    outside.moment = QDateTime(QDate(2026, 3, 10), QTime(9, 0));
    press("Command9");
    EXPECT_EQ(loans(),
              u"120 2 2026-03-09 08:05:03 2026-03-10 09:00:00, 120 4 2026-03-09 08:05:03, "
              "120 1 2026-03-09 08:05:03 2026-03-10 09:00:00"_s);
    EXPECT_EQ(panels(), u""_s);
    choose(u"U3"_s);
    open("keyHVratit");
    EXPECT_EQ(films("lstVratit"), u""_s);
    EXPECT_EQ(panels(), u"picVratit"_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FrmKlientiTest, APanelStaysAsItIsWhenAnotherCustomerIsSelectedAndThenActsForThatOne) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (120, 2, '2026-01-01'),"
        " (12, 4, '2026-01-01')");
    choose(u"U12"_s);
    open("keyHVratit");
    open("keyHpujcka");
    choose(u"U7"_s);
    EXPECT_EQ(in<QLabel>("lblKZapujceni").text(), u"Volné filmy k zapůjčení : Dvořák (120)"_s);
    pick("lstPujcit", {0});
    press("Command8");
    EXPECT_EQ(loans(), u"120 2 2026-01-01, 12 4 2026-01-01, 12 3 2026-03-09 08:05:03"_s);
    EXPECT_EQ(films("lstVratit"), u"cesta"_s);
    press("Command6");
    EXPECT_EQ(in<QLabel>("lblVratit").text(), u"Vypůjčené filmy k vrácení: Novák (12)"_s);
    EXPECT_EQ(films("lstVratit"), u"Čáp, Chata"_s);
    open("keyHpujcka");
    sql("DELETE FROM tPujcky");
    press("Command13");
    EXPECT_EQ(films("lstPujcit"), u"cesta, Čáp, Chata, Žena"_s);
    open("ShowUserHistory");
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatVraceni) VALUES (7, 2, '2026-01-01 10:00:00')");
    press("Command12");
    EXPECT_EQ(in<QPlainTextEdit>("txtHistorie").toPlainText(), u"cesta vráceno : 01.01.2026 10:00:00\n"_s);
}

TEST_F(FrmKlientiTest, InBulkTheCodeHasToBeANumber) {
    const std::tuple<const char*, qint32, QString> cases[] = {{"7x", errors::typeMismatch, u""_s},
                                                              {"", errors::typeMismatch, u""_s},
                                                              {"2147483648", errors::overflow, u""_s},
                                                              {" 007 ", 0, u"7 2 2026-03-09 08:05:03"_s},
                                                              {"-1", 0, u"-1 2 2026-03-09 08:05:03"_s}};
    for (const auto& [code, failure, stored] : cases) {
        SCOPED_TRACE(code);
        sql(("DELETE FROM tPujcky; UPDATE tUser SET USREGNUM='" + QByteArray(code) + "' WHERE USID=9")
                .constData());
        window().NactiList();
        choose(u"U9"_s);
        open("keyHVratit");
        EXPECT_EQ(films("lstVratit"), u""_s);
        // One too long is a whole number all the same, that of nobody.
        EXPECT_EQ(outside.told().isEmpty(), failure != errors::typeMismatch);
        press("Command10");
        open("keyHpujcka");
        pick("lstPujcit", {0});
        EXPECT_EQ(failureOf([this] { in<QPushButton>("Command8").click(); }), failure);
        EXPECT_EQ(loans(), stored);
        EXPECT_EQ(panels(), failure == 0 ? u""_s : u"picVypujcit"_s);
        press("Command7");
    }
}

TEST_F(FrmKlientiTest, ALoanThatFailsStopsTheRestAndLeavesTheEarlierOnes) {
    sql("CREATE TRIGGER refuse BEFORE INSERT ON tPujcky WHEN NEW.P_DVDID=4"
        " BEGIN SELECT RAISE(ABORT, 'refused'); END");
    window().KVypujceni_Obnovit();
    in<ListBox>("lstPujcit").selectAll();
    EXPECT_NE(failureOf([this] { in<QPushButton>("Command8").click(); }), 0);
    EXPECT_EQ(loans(), u"8 2 2026-03-09 08:05:03, 8 3 2026-03-09 08:05:03"_s);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(FrmKlientiTest, PanelsAreClosedByTheirButtonsAndByTheEscapeKey) {
    for (const auto& [opening, closing] :
         {std::pair("ShowUserHistory", "Command11"), std::pair("keyHVratit", "Command5"),
          std::pair("keyHVratit", "Command10"), std::pair("keyHpujcka", "Command14"),
          std::pair("keyHpujcka", "Command7")}) {
        open(opening);
        EXPECT_NE(panels(), u""_s);
        press(closing);
        EXPECT_EQ(panels(), u""_s) << closing;
    }
    const auto escape = [this] { QTest::keyClick(window().focusWidget(), Qt::Key_Escape); };
    open("keyHpujcka");
    open("ShowUserHistory");
    open("keyHVratit");
    open("keyHpujcka");  // comes to the top again
    for (const QString& shown : {u"picHistorie picVratit"_s, u"picHistorie"_s, u""_s}) {
        escape();
        EXPECT_EQ(panels(), shown);
    }
    escape();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(FrmKlientiTest, KeysReachNothingThatAPanelCovers) {
    open("ShowUserHistory");
    open("keyHpujcka");
    const QWidget& top = in<QFrame>("picVypujcit");
    for (int step = 0; step < 20; ++step) {
        const QWidget* focused = window().focusWidget();
        EXPECT_TRUE(top.isAncestorOf(focused) || in<QToolBar>("Toolbar1").isAncestorOf(focused))
            << focused->objectName().toStdString();
        QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
    }
    for (const QWidget* uncovered : {&in<QWidget>("txtHistorie"), &in<QWidget>("lvwUsers")}) {
        QTest::keyClick(window().focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(window().focusWidget(), uncovered);
    }
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(list().selectedItem().row(), 1);
}

TEST_F(FrmKlientiTest, AddedAndEditedCustomersAreListedAtOnce) {
    choose(u"U7"_s);
    for (const QString& name : {u"Adam"_s, u"Abel"_s}) {
        inModalWindow([this] { press("Command1"); },
                      [&](const QWidget& form) {
                          EXPECT_EQ(entered(form).join(u""_s), u""_s);
                          enter(form, {{}, name, {}, {}, u"Brno\nStřed"_s});
                          click(form, "cmdSave");
                      });
    }
    EXPECT_TRUE(rows().startsWith(u"U30|8||x\nU32|32|Abel|Brno, Střed\nU31|31|Adam|Brno, Střed\n"_s));
    EXPECT_EQ(list().selectedItem().key(), u"U30"_s);

    choose(u"U12"_s);
    inModalWindow([this] { press("Command3"); },
                  [](const QWidget& form) {
                      EXPECT_EQ(entered(form).join(u'|'), u"120|Dvořák|||Krátká 2\nBrno\n|"_s);
                      enter(form, {{}, u"Áron"_s, {}, {}, u"Krátká 2\nBrno\n"_s});
                      click(form, "cmdSave");
                  });
    EXPECT_TRUE(rows().contains(u"\nU12|12|Áron|Krátká 2, Brno, \n"_s));
    EXPECT_TRUE(outside.boxes.isEmpty());
}
