#include "rental/frmKlienti.h"

#include <QAction>
#include <QToolBar>

#include "rental/SharedUser.h"
#include "rental/rentalFixture.h"
#include "support/conversions.h"
#include "toolkit/ListBox.h"
#include "toolkit/ListView.h"

namespace {

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
    /// Clicks a button of the window or of its tool bar. @return the panels and the boxes shown then
    QString after(const char* button) {
        auto* action = window().findChild<QAction*>(QLatin1String(button));
        action == nullptr
            ? click(window(), button)
            : QTest::mouseClick(in<QToolBar>("Toolbar1").widgetForAction(action), Qt::LeftButton);
        return panels() + outside.told();
    }
    /// The panels shown, each with its title in brackets and what it lists.
    QString panels() {
        QString shown = !in<QFrame>("picHistorie").isVisible()
                            ? QString()
                            : u'[' + in<QLabel>("lblHist").text() + u']' +
                                  in<QPlainTextEdit>("txtHistorie").toPlainText();
        for (const auto& [panel, title, box] : {std::tuple("picVratit", "lblVratit", "lstVratit"),
                                                std::tuple("picVypujcit", "lblKZapujceni", "lstPujcit")}) {
            if (!in<QFrame>(panel).isVisible()) continue;
            shown += u'[' + in<QLabel>(title).text() + u']';
            for (int index = 0; index < in<ListBox>(box).listCount(); ++index)
                shown += u'|' + in<ListBox>(box).entry(index).text;
        }
        return shown;
    }
    /// Clicks entries while Ctrl is held down.
    void pick(const char* box, const QList<int>& entries) {
        auto& films = in<ListBox>(box);
        for (const int index : entries) {
            QTest::mouseClick(films.viewport(), Qt::LeftButton, Qt::ControlModifier,
                              films.visualRect(films.model()->index(index, 0)).center());
        }
    }

 private:
    std::optional<frmKlienti> window_;
};

}  // namespace

TEST_F(FrmKlientiTest, WithoutCustomersNoPanelOpensAndNobodyCanBeEdited) {
    sql("DELETE FROM tUser");
    for (const char* button : {"ShowUserHistory", "keyHpujcka", "keyHVratit"}) {
        EXPECT_EQ(after(button), u"Neexistuje osoba pro zapůjčení!|64|Nepovolená operace:"_s) << button;
    }
    EXPECT_EQ(after("Command4"), u""_s);
    EXPECT_EQ(failureOf([this] { in<QPushButton>("Command3").click(); }), errors::objectNotSet);
}

TEST_F(FrmKlientiTest, PanelsOpenForTheSelectedCustomerStayAndActForTheOneSelectedThen) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky, PDatVraceni) VALUES"
        " (12, 1, '2026-01-01', '2026-02-01 10:00:00'), (120, 2, '2026-01-01', '2026-02-02 10:00:00'),"
        " (120, 4, '2026-01-01', NULL), (12, 3, '2026-01-01', NULL)");
    const QString past = u"[Historie výpůjček : Dvořák (120)]Žena vráceno : 01.02.2026 10:00:00\n"_s;
    const QString lent = past + u"[Vypůjčené filmy k vrácení: Dvořák (120)]|Chata"_s;
    const QString free = lent + u"[Volné filmy k zapůjčení : Dvořák (120)]|cesta|Žena"_s;
    choose(u"U12"_s);
    EXPECT_EQ(after("ShowUserHistory"), past);
    EXPECT_EQ(after("keyHVratit"), lent);
    EXPECT_EQ(after("keyHpujcka"), free);
    window().resize(window().size() + QSize(200, 100));
    const QRect& shown = in<QFrame>("picVypujcit").geometry();
    EXPECT_TRUE(shown.contains(list().geometry()));
    EXPECT_FALSE(shown.intersects(in<QToolBar>("Toolbar1").geometry()));

    choose(u"U7"_s);
    EXPECT_EQ(panels(), free);
    pick("lstPujcit", {0});
    EXPECT_EQ(after("Command8"), lent);
    EXPECT_EQ(text("SELECT P_UID || ' ' || P_DVDID FROM tPujcky WHERE P_ID=5"), u"12 2"_s);
    EXPECT_EQ(after("Command6"), past + u"[Vypůjčené filmy k vrácení: Novák (12)]|cesta|Čáp"_s);
    after("keyHpujcka");
    sql("DELETE FROM tPujcky");
    EXPECT_TRUE(after("Command13").endsWith(u"]|cesta|Čáp|Chata|Žena"_s));
    after("ShowUserHistory");
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatVraceni) VALUES (7, 2, '2026-01-01 10:00:00')");
    EXPECT_TRUE(after("Command12").contains(u"Novák (12)]cesta vráceno : 01.01.2026 10:00:00\n["_s));
}

TEST_F(FrmKlientiTest, TheSearchSelectsTheFirstRowThatContainsTheTerm) {
    auto& term = in<QLineEdit>("txtFindUser");
    const auto found = [&](const QString& typed) {
        choose(u"U20"_s);
        term.setText(typed);
        for (int time = 0; time < 2; ++time)  // each search starts at the top
            after("Command4");
        return list().selectedItem().key();
    };
    expectEach(found,
               {u"12→U12", u"120→U12", u" 3 →U3", u"999→U20", u"řÁK→U12", u" nOVÁK  →U7", u"ák→U3", u"7x→U20",
                u"-3→U20", u"1 2→U20", u"Praha→U20", u"→U9", u"   →U9", u"novak→U20", u"7→U9"});
}

TEST_F(FrmKlientiTest, SelectedFilmsAreLentAndReturnedUnderTheCode) {
    choose(u"U12"_s);
    after("keyHpujcka");
    EXPECT_EQ(after("Command8"), u""_s);  // with nothing selected
    EXPECT_EQ(loans(), u""_s);
    after("keyHpujcka");
    pick("lstPujcit", {3, 0, 2});
    EXPECT_EQ(after("Command8"), u""_s);
    EXPECT_EQ(loans(), u"120 2 2026-03-09 08:05:03, 120 4 2026-03-09 08:05:03, 120 1 2026-03-09 08:05:03"_s);
    EXPECT_TRUE(after("keyHVratit").endsWith(u"]|cesta|Chata|Žena"_s));
    pick("lstVratit", {0, 1, 2, 1});
    outside.moment = QDateTime(QDate(2026, 3, 10), QTime(9, 0));
    EXPECT_EQ(after("Command9"), u""_s);
    EXPECT_EQ(loans(),
              u"120 2 2026-03-09 08:05:03 2026-03-10 09:00:00, 120 4 2026-03-09 08:05:03, "
              "120 1 2026-03-09 08:05:03 2026-03-10 09:00:00"_s);
}

TEST_F(FrmKlientiTest, ACodeThatIsNoNumberIsReportedAndLendingStopsAtAFailure) {
    choose(u"U9"_s);
    EXPECT_TRUE(after("keyHVratit")
                    .endsWith(u"]Osobní kód \"7x\" není celé číslo, výpůjčky pod ním nelze vyhledat.|64|"
                              "Vrácení filmů"_s));
    refuse(catalogue(), "tPujcky", "P_DVDID=4");
    window().KVypujceni_Obnovit();
    in<ListBox>("lstPujcit").selectAll();
    for (const auto& [key, stored] :
         {std::pair(u"U9"_s, u""_s),
          std::pair(u"U30"_s, u"8 2 2026-03-09 08:05:03, 8 3 2026-03-09 08:05:03"_s)}) {
        choose(key);
        EXPECT_NE(failureOf([this] { in<QPushButton>("Command8").click(); }), 0);
        EXPECT_EQ(loans(), stored);
        EXPECT_EQ(panels().count(u'['), 2);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
}

TEST_F(FrmKlientiTest, PanelsAreClosedByTheirButtonsAndEscapeAndOnlyTheTopOneHasTheKeyboard) {
    const std::pair<const char*, const char*> buttons[] = {{"ShowUserHistory", "Command11"},
                                                           {"keyHVratit", "Command5"},
                                                           {"keyHVratit", "Command10"},
                                                           {"keyHpujcka", "Command14"},
                                                           {"keyHpujcka", "Command7"}};
    for (const auto& [opening, closing] : buttons) {
        EXPECT_NE(after(opening), u""_s);
        EXPECT_EQ(after(closing), u""_s) << closing;
    }
    const auto key = [this](Qt::Key pressed) { QTest::keyClick(window().focusWidget(), pressed); };
    for (const char* panel : {"keyHpujcka", "ShowUserHistory", "keyHVratit", "keyHpujcka"})
        after(panel);
    for (int step = 0; step < 20; ++step) {
        const QWidget* parent = window().focusWidget()->parentWidget();
        EXPECT_TRUE(in<QFrame>("picVypujcit").isAncestorOf(window().focusWidget()) ||
                    parent == &in<QToolBar>("Toolbar1"));
        key(Qt::Key_Tab);
    }
    for (const auto& [shown, focused] :
         {std::pair(2, u"lstVratit"_s), std::pair(1, u"txtHistorie"_s), std::pair(0, u"lvwUsers"_s)}) {
        key(Qt::Key_Escape);
        EXPECT_EQ(panels().count(u'['), shown);
        EXPECT_EQ(window().focusWidget()->objectName(), focused);
    }
    key(Qt::Key_Down);
    EXPECT_EQ(list().selectedItem().row(), 1);
}

TEST_F(FrmKlientiTest, CustomersAreListedByNameWithTheirAddressInOneLine) {
    const auto save = [this](const char* button, const QString& shown, const QString& name) {
        inModalWindow([&] { after(button); },
                      [&](const QWidget& form) {
                          EXPECT_EQ(entered(form).join(u'|'), shown);
                          enter(form, {{}, name, {}, {}, u"Brno\nStřed\n"_s});
                          click(form, "cmdSave");
                      });
    };
    EXPECT_EQ(list().selectedItem().key() + panels(), u"U30"_s);
    choose(u"U12"_s);
    save("Command3", u"120|Dvořák|||Krátká 2\nBrno\n|"_s, u"Áron"_s);
    save("Command1", u"|||||"_s, u"Adam"_s);
    save("Command1", u"|||||"_s, u"Abel"_s);
    EXPECT_EQ(
        rowsOf(list()).join(u'\n'),
        u"U30|8||x\nU32|32|Abel|Brno, Střed, \nU31|31|Adam|Brno, Střed, \nU12|12|Áron|Brno, Střed, \nU9|7x|Čapek|\nU3|3|Čermák|\nU7|12|Novák|Praha\nU20|5|Žák|a\nb"_s);
    EXPECT_EQ(list().selectedItem().key(), u"U30"_s);
}
