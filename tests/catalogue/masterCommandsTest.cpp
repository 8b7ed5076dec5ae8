#include <QHeaderView>
#include <QSet>

#include "catalogue/masterFixture.h"
#include "rental/frmKlienti.h"
#include "rental/frmPujcDVD.h"
#include "rental/frmUser.h"

using namespace Qt::StringLiterals;

namespace {

class MasterCommandsTest : public MasterTest {
 protected:
    /// Triggers a find command and answers its prompt by typing a term and a key. @return the key of the row
    /// that is selected then
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

    void clickHeader(int column) {
        const QHeaderView* header = list().header();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + 15, 8));
    }

    /// The dialog that a command opens to lend the selected film.
    frmPujcDVD& lendingOpened(const char* command) {
        QSet<QWidget*> before;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible()) before += widget;
        }
        action(command)->trigger();
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* dialog = qobject_cast<frmPujcDVD*>(widget);
            if (dialog != nullptr && dialog->isVisible() && !before.contains(widget)) return *dialog;
        }
        throw std::runtime_error(command);
    }

    QString order() {
        QStringList keys;
        for (int row = 0; row < list().count(); ++row)
            keys += list().itemAt(row).key();
        return keys.join(u' ');
    }
};

}  // namespace

TEST_F(MasterCommandsTest, DeletingAsksAndLeavesLoansAndPictures) {
    sql(pictures(), "INSERT INTO tPicture (PicDVDID, PicSkup) VALUES (4, 'O')");
    window().show();
    list().select(list().item(u"K4"));
    outside.answers = {BoxAnswer::no, BoxAnswer::yes};
    action("mnuListItem_2")->trigger();
    EXPECT_EQ(list().count(), 4);
    action("SortKatNum")->trigger();
    list().select(list().item(u"K4"));
    action("mnuListItem_2")->trigger();
    const QString asked = u"Opravdu vymazat záznam (Čáp)?|68|Ověření požadavku na smazání."_s;
    EXPECT_EQ(outside.told(), asked + u'\n' + asked);
    EXPECT_EQ(order(), u"K2 K5 K1"_s);  // by title, whatever the order was
    EXPECT_EQ(counts(), u"4 1"_s);
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_DVDID=4 AND PDatVraceni IS NULL"), 1);
    EXPECT_EQ(text(pictures(), "SELECT count(*) FROM tPicture"), u"1"_s);
}

TEST_F(MasterCommandsTest, ReturningAsksAndTurnsTheRowBlack) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (12, 4, '2026-02-06 10:00:00')");
    window().show();
    list().select(list().item(u"K4"));
    outside.answers = {BoxAnswer::no, BoxAnswer::yes, BoxAnswer::yes};
    action("KeyPujcitVratit")->trigger();
    EXPECT_EQ(outside.told(), u"Opravdu vrátit film : \" Čáp ?|36|Ověření"_s);
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_DVDID=4 AND PDatVraceni IS NULL"), 2);
    action("mnuListItem_1")->trigger();
    // Only the first of the two loans is closed, at the present moment.
    EXPECT_EQ(text("SELECT group_concat(ifnull(PDatVraceni, '-'), ' ') FROM tPujcky WHERE P_DVDID=4"),
              u"2026-03-09 08:05:03 -"_s);
    EXPECT_EQ(rows()[1], u"*12a|Čáp|Pohádka|Dvořák|06.02.2026 10:00:00|Stork|Neuvedeno"_s);
    action("mnuListItem_1")->trigger();
    EXPECT_EQ(rows()[1], u" 12a|Čáp|Pohádka|||Stork|Neuvedeno"_s);
    EXPECT_EQ(counts(), u"5 1"_s);
    // A film whose open loan meets no customer is out of reach here.
    window().vratitFilm(5);
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_DVDID=5 AND PDatVraceni IS NULL"), 1);
}

TEST_F(MasterCommandsTest, LendingBringsTheRowUpToDateWhenItsDialogIsAnswered) {
    window().show();
    // A film whose open loan meets no customer looks free here, and so does one lent elsewhere meanwhile.
    list().select(list().item(u"K5"));
    frmPujcDVD& first = lendingOpened("KeyPujcitVratit");
    frmPujcDVD& second = lendingOpened("mnuListItem_1");
    list().select(list().item(u"K1"));
    EXPECT_EQ(first.windowTitle(), u"Zapůjčit: Chata"_s);
    control<QComboBox>(first, "Combo1").setCurrentText(u"Novák"_s);
    for (const frmPujcDVD* dialog : {&first, &second})
        control<QPushButton>(*dialog, "Command2").click();
    EXPECT_EQ(text("SELECT group_concat(P_UID || ifnull(PDatVraceni, '')) FROM tPujcky WHERE P_DVDID=5"),
              u"99,7,12"_s);
    EXPECT_EQ(rows().filter(u"Chata"_s),
              QStringList(u"*100|Chata|Horor|Dvořák|09.03.2026 8:05:03|Hut|Neuvedeno"_s));
    EXPECT_EQ(list().selectedItem().key(), u"K1"_s);
    outside.answers = {BoxAnswer::yes};
    list().select(list().item(u"K5"));
    action("KeyPujcitVratit")->trigger();
    EXPECT_EQ(number("SELECT P_UID FROM tPujcky WHERE P_DVDID=5 AND PDatVraceni IS NOT NULL"), 7);

    // Cancelling refreshes the row all the same; leaving by the frame does not.
    list().select(list().item(u"K1"));
    for (const bool cancelled : {false, true}) {
        frmPujcDVD& dialog = lendingOpened("KeyPujcitVratit");
        sql("UPDATE tDVD SET CZJm='Nový název' WHERE DVDID=1");
        cancelled ? control<QPushButton>(dialog, "Command1").click() : void(dialog.close());
        EXPECT_EQ(list().item(u"K1").subItem(1), cancelled ? u"Nový název"_s : u"Žena"_s);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(MasterCommandsTest, OneCustomerFormServesTheMenuAndTheRentalWindowAndBothOutliveTheList) {
    window().show();
    action("smnuPujcovna_2")->trigger();
    auto* form = shownWindow<frmUser>();
    ASSERT_NE(form, nullptr);
    EXPECT_FALSE(form->isModal());
    auto& name = control<QLineEdit>(*form, "txtUSNAME");
    name.setText(u"Nový"_s);
    action("smnuPujcovna_0")->trigger();
    QPointer<QWidget> rental = shownWindow<frmKlienti>();
    ASSERT_TRUE(rental);
    inModalWindow([&] { click(*rental, "Command1"); },
                  [&](QWidget& shown) {
                      EXPECT_EQ(&shown, form);
                      EXPECT_EQ(name.text(), u"Nový"_s);
                      form->reject();
                  });
    action("smnuPujcovna_2")->trigger();  // unloaded meanwhile
    EXPECT_EQ(control<QLineEdit>(*shownWindow<frmUser>(), "txtUSNAME").text(), u""_s);
    action("smnuPujcovna_0")->trigger();
    EXPECT_EQ(shownWindow<frmKlienti>(), rental);
    closeWindow();
    ASSERT_TRUE(rental && rental->isVisible());
    rental->close();
    QCoreApplication::sendPostedEvents(rental, QEvent::DeferredDelete);
    EXPECT_FALSE(rental);
}

TEST_F(MasterCommandsTest, FindCommandsSelectTheFirstHit) {
    window().show();
    EXPECT_EQ(find("KeyFindCZ", u"Najít v českém názvu"_s, u"žena"_s), u"K1"_s);
    EXPECT_EQ(find("KeyFindKATNUM", u"Najít katalogové číslo"_s, u"100"_s), u"K5"_s);
    EXPECT_EQ(find("KeyFindPUV", u"Najít v původním názvu"_s, u"9:01"_s), u"K4"_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_EQ(find("KeyFindPUV", u"Najít v původním názvu"_s, u"Stork "_s), u"K4"_s);
    EXPECT_EQ(outside.told(), u"Záznam nenalezen|64|Vyhledávání výrazu: Stork "_s);
    // Left: an empty term.
    EXPECT_EQ(find("keyFind", u"Najít v českém názvu"_s, u"žena"_s, Qt::Key_Escape), u"K2"_s);
}

TEST_F(MasterCommandsTest, ColumnClicksSortAndPaintBlackUntilTheNextRefresh) {
    window().show();
    clickHeader(0);
    EXPECT_EQ(order(), u"K5 K4 K1 K2"_s);
    EXPECT_TRUE(rows().filter(u"*"_s).isEmpty());
    clickHeader(4);
    EXPECT_EQ(order(), u"K5 K1 K2 K4"_s);
    clickHeader(5);
    EXPECT_EQ(order(), u"K1 K4 K5 K2"_s);  // by the original title, downwards
    action("SortKatNum")->trigger();
    EXPECT_EQ(order(), u"K1 K4 K5 K2"_s);  // a text column stays in force
    EXPECT_EQ(rows().filter(u"*"_s).size(), 2);
    clickHeader(0);
    action("SortKatNum")->trigger();
    EXPECT_EQ(order(), u"K1 K5 K4 K2"_s);
}

TEST_F(MasterCommandsTest, AnEmptyListOffersOnlyWhatNeedsNoRow) {
    sql("DELETE FROM tDVD");
    window().show();
    for (const char* needsRow :
         {"KeyEdit", "KeyPujcitVratit", "mnuListItem_0", "mnuListItem_1", "mnuListItem_2"}) {
        EXPECT_FALSE(action(needsRow)->isEnabled()) << needsRow;
    }
    EXPECT_EQ(find("keyFind", u"Najít v českém názvu"_s, u""_s), u""_s);
    EXPECT_FALSE(outside.told().isEmpty());
    for (int column = 0; column < 7; ++column) {
        emit list().columnClicked(column);
        EXPECT_EQ(list().sortKey(), column);
    }
    EXPECT_EQ(counts(), u"0 0"_s);
    EXPECT_FALSE(list().hasSelectedItem());
}
