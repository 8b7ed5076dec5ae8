#include <QHeaderView>
#include <QWindow>

#include "catalogue/masterFixture.h"
#include "film/frmDVD.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanry.h"
#include "rental/frmKlienti.h"
#include "rental/frmPujcDVD.h"
#include "rental/frmUser.h"

namespace {

class MasterCommandsTest : public MasterTest {
 protected:
    /// Runs a find command and answers its prompt. @return the key of the row selected afterwards
    QString find(const char* command, const QString& caption, const QString& term,
                 Qt::Key key = Qt::Key_Return) {
        inModalWindow([&] { action(command)->trigger(); },
                      [&](const QWidget& prompt) {
                          EXPECT_EQ(prompt.windowTitle(), caption);
                          auto& box = control<QLineEdit>(prompt, "Text1");
                          box.setText(term);
                          QTest::keyClick(&box, key);
                      });
        return list().hasSelectedItem() ? list().selectedItem().key() : u""_s;
    }
    /// Runs a command that opens the editor, enters a title there and presses a button.
    void edit(const char* command, qint32 film, const QString& title, const char* button) {
        inModalWindow([&] { action(command)->trigger(); },
                      [&](QWidget& editor) {
                          EXPECT_EQ(dynamic_cast<frmDVD&>(editor).IDFilmu, film);
                          control<QLineEdit>(editor, "txtCZName").setText(title);
                          click(editor, button);
                      });
    }
    /// Opens a dialog to lend the selected film.
    frmPujcDVD& lendingOpened(const char* command) {
        action(command)->trigger();
        // The newest window is the last one.
        return dynamic_cast<frmPujcDVD&>(*QWidget::find(QGuiApplication::topLevelWindows().last()->winId()));
    }
    /// Opens a window by its command, which has to show the same one when it is repeated.
    template <typename Window>
    QPointer<QWidget> openedOnce(const char* command) {
        action(command)->trigger();
        Window* const shown = shownWindow<Window>();
        EXPECT_TRUE(shown != nullptr && !shown->isModal()) << command;
        action(command)->trigger();
        EXPECT_EQ(shownWindow<Window>(), shown);
        return shown;
    }
    /// The numbers of the rows in order.
    QString order() { return rows().replaceInStrings(QRegularExpression(u"^.|\\|.*"_s), u""_s).join(u' '); }
};

}  // namespace

TEST_F(MasterCommandsTest, DeletingAsksAndKeepsLoansAndPictures) {
    sql(pictures(), "INSERT INTO tPicture (PicDVDID, PicSkup) VALUES (4, 'O')");
    action("SortKatNum")->trigger();
    choose(u"K4"_s);
    outside.answers = {BoxAnswer::no, BoxAnswer::yes};
    action("mnuListItem_2")->trigger();
    EXPECT_EQ(order(), u"10 100 12a 9"_s);
    action("mnuListItem_2")->trigger();
    EXPECT_EQ(outside.owner(), &window());
    const QString asked = u"Opravdu vymazat záznam (Čáp)?|68|Ověření požadavku na smazání."_s;
    EXPECT_EQ(outside.told(), asked + u'\n' + asked);
    EXPECT_EQ(order(), u"9 100 10"_s);                // always by title
    EXPECT_EQ(list().selectedItem().key(), u"K2"_s);  // the one below
    EXPECT_EQ(counts(), u"4 1"_s);
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_DVDID=4 AND PDatVraceni IS NULL"), 1);
    EXPECT_EQ(text(pictures(), "SELECT count(*) FROM tPicture"), u"1"_s);
}

TEST_F(MasterCommandsTest, ReturningAsksAndClosesTheFirstOpenLoan) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (12, 4, '2026-02-06 10:00:00')");
    window().ObnovZaznam(4);
    choose(u"K4"_s);
    outside.answers = {BoxAnswer::no, BoxAnswer::yes, BoxAnswer::yes};
    const auto afterwards = [this](const char* command) {
        action(command)->trigger();
        EXPECT_EQ(outside.owner(), &window());
        EXPECT_EQ(outside.told(), u"Opravdu vrátit film : \" Čáp ?|36|Ověření"_s);
        return rows()[1] + text("SELECT group_concat(ifnull(PDatVraceni, '-')) FROM tPujcky WHERE P_DVDID=4");
    };
    EXPECT_EQ(afterwards("KeyPujcitVratit"),
              u"*12a|Čáp|Pohádka|Dvořák|06.02.2026 10:00:00|Stork|Neuvedeno-,-"_s);
    EXPECT_EQ(afterwards("mnuListItem_1"),
              u"*12a|Čáp|Pohádka|Dvořák|06.02.2026 10:00:00|Stork|Neuvedeno2026-03-09 08:05:03,-"_s);
    EXPECT_EQ(afterwards("mnuListItem_1"),
              u" 12a|Čáp|Pohádka|||Stork|Neuvedeno2026-03-09 08:05:03,2026-03-09 08:05:03"_s);
    EXPECT_EQ(counts(), u"5 1"_s);
    window().vratitFilm(5);  // its borrower does not exist
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_DVDID=5 AND PDatVraceni IS NULL"), 1);
}

TEST_F(MasterCommandsTest, AnsweringALendingDialogRefreshesTheRow) {
    // Film 5 looks free, as its borrower does not exist; so does one lent by another dialog meanwhile.
    choose(u"K5"_s);
    frmPujcDVD& first = lendingOpened("KeyPujcitVratit");
    frmPujcDVD& second = lendingOpened("mnuListItem_1");
    choose(u"K1"_s);
    EXPECT_EQ(first.windowTitle(), u"Zapůjčit: Chata"_s);
    const QPoint apart = second.pos() - first.pos();  // frames differ between desktops
    EXPECT_TRUE(apart.x() >= 20 && apart.y() >= 20);
    control<QComboBox>(first, "Combo1").setCurrentText(u"Novák"_s);
    for (const frmPujcDVD* dialog : {&first, &second})
        control<QPushButton>(*dialog, "Command2").click();
    EXPECT_EQ(text("SELECT group_concat(P_UID || ifnull(PDatVraceni, '')) FROM tPujcky WHERE P_DVDID=5"),
              u"99,7,12"_s);
    EXPECT_EQ(rows()[2], u"*100|Chata|Horor|Dvořák|09.03.2026 8:05:03|Hut|Neuvedeno"_s);
    EXPECT_EQ(list().selectedItem().key(), u"K1"_s);
    choose(u"K5"_s);
    action("KeyPujcitVratit")->trigger();
    EXPECT_EQ(outside.told(), u"Opravdu vrátit film : \" Chata ?|36|Ověření"_s);
    EXPECT_EQ(number("SELECT P_UID FROM tPujcky WHERE P_DVDID=5 AND PDatVraceni IS NOT NULL"), 7);

    // Cancelling refreshes the row, too; closing the window does not.
    choose(u"K1"_s);
    for (const bool cancelled : {false, true}) {
        frmPujcDVD& dialog = lendingOpened("KeyPujcitVratit");
        sql("UPDATE tDVD SET CZJm='Nový název' WHERE DVDID=1");
        cancelled ? control<QPushButton>(dialog, "Command1").click() : void(dialog.close());
        EXPECT_EQ(list().item(u"K1").subItem(1), cancelled ? u"Nový název"_s : u"Žena"_s);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(MasterCommandsTest, NewFilmsAreAppendedAndEditedOnesRefreshed) {
    edit("KeyAddNew", 0, u"Nic"_s, "cmdStorno");
    EXPECT_EQ(list().count(), 4);
    edit("KeyAddNew", 0, u"Aaa"_s, "cmdSave");
    EXPECT_EQ(rows().last(), u" 6|Aaa|||||Česky"_s);
    EXPECT_EQ(counts(), u"5 2"_s);
    choose(u"K4"_s);
    for (const char* command : {"KeyEdit", "mnuListItem_0"}) {
        edit(command, 4, QString::fromLatin1(command), "cmdSave");
        EXPECT_EQ(list().selectedItem().subItem(1), QLatin1String(command));
    }
    EXPECT_EQ(rows()[1], u"*12a|mnuListItem_0|Pohádka|Dvořák|04.02.2026 9:01:02|Stork|Neuvedeno"_s);
}

TEST_F(MasterCommandsTest, WindowsOpenOnceShareTheCustomerFormAndOutliveTheMainWindow) {
    const QPointer<QWidget> form = openedOnce<frmUser>("smnuPujcovna_2");
    control<QLineEdit>(*form, "txtUSNAME").setText(u"Nový"_s);
    const QPointer<QWidget> rental = openedOnce<frmKlienti>("smnuPujcovna_0");
    inModalWindow([&] { click(*rental, "Command1"); },
                  [&](QWidget& shown) {
                      EXPECT_EQ(&shown, form);
                      EXPECT_EQ(control<QLineEdit>(shown, "txtUSNAME").text(), u"Nový"_s);
                      shown.close();
                  });
    EXPECT_FALSE(form);  // unloaded
    const QList<QPointer<QWidget>> windows = {rental, openedOnce<frmZanry>("mnuCisl_0"),
                                              openedOnce<frmOddeleniList>("mnuCisl_1")};
    EXPECT_EQ(control<QLineEdit>(*openedOnce<frmUser>("smnuPujcovna_2"), "txtUSNAME").text(), u""_s);
    window().close();
    closeWindow();
    for (const auto& window : windows) {
        ASSERT_TRUE(window && window->isVisible());
        window->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(windows, QList<QPointer<QWidget>>(3));
}

TEST_F(MasterCommandsTest, FindCommandsSelectTheFirstHit) {
    const QString inTitle = u"Najít v českém názvu"_s;
    const QString inOriginal = u"Najít v původním názvu"_s;
    EXPECT_EQ(find("KeyFindCZ", inTitle, u"žena"_s), u"K1"_s);
    EXPECT_EQ(find("KeyFindKATNUM", u"Najít katalogové číslo"_s, u"100"_s), u"K5"_s);
    EXPECT_EQ(find("KeyFindPUV", inOriginal, u"9:01"_s), u"K4"_s);
    EXPECT_EQ(find("KeyFindPUV", inOriginal, u"Stork "_s), u"K4"_s);
    EXPECT_EQ(outside.owner(), &window());
    EXPECT_EQ(outside.told(), u"Záznam nenalezen|64|Vyhledávání výrazu: Stork "_s);
    EXPECT_EQ(find("keyFind", inTitle, u"žena"_s, Qt::Key_Escape), u"K2"_s);  // an empty term
}

TEST_F(MasterCommandsTest, SortingByColumnPaintsBlackUntilTheNextRefresh) {
    const auto click = [this](int column) {
        const QHeaderView& header = *list().header();
        const QPoint place(header.sectionViewportPosition(column) + 15, 8);
        // The second click of a double click counts, too.
        column == 5 ? QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, place)
                    : QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
        return order();
    };
    EXPECT_EQ(click(0), u"100 12a 10 9"_s);
    EXPECT_TRUE(rows().filter(u"*"_s).isEmpty());
    EXPECT_EQ(click(4), u"100 10 9 12a"_s);
    EXPECT_EQ(click(5), u"10 12a 100 9"_s);  // original title, descending
    choose(u"K5"_s);
    action("SortKatNum")->trigger();
    EXPECT_EQ(list().selectedItem().key(), u"K5"_s);
    EXPECT_EQ(order(), u"10 12a 100 9"_s);  // a text column stays in force
    EXPECT_EQ(rows().filter(u"*"_s).size(), 2);
    click(0);
    action("SortKatNum")->trigger();
    EXPECT_EQ(order(), u"10 100 12a 9"_s);
}
