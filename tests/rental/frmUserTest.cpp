#include "rental/frmUser.h"

#include <QClipboard>
#include <QFile>

#include "platform/errors.h"
#include "rental/SharedUser.h"
#include "rental/rentalFixture.h"

namespace {

class FrmUserTest : public RentalTest {
 protected:
    static QString key(const frmUser& form) { return control<QLabel>(form, "lblUSID").text(); }

    /// Enters a customer in the form, shown for that, and saves.
    static void save(frmUser& form, const QStringList& texts) {
        form.show();
        enter(form, texts);
        click(form, "cmdSave");
        EXPECT_FALSE(form.isVisible());
    }
    static void load(frmUser& form, qint32 id) {
        form.setUSID(id);
        form.ReadData();
        form.show();
    }
};

}  // namespace

TEST_F(FrmUserTest, ACustomerNeedsNameAndAddressAndGetsTheKeyAsCodeWithoutOne) {
    // The customer edited (0 for a new one), the code typed, the one stored, and the key in the form then.
    const std::tuple<qint32, QString, QString, QString> cases[] = {
        {0, u""_s, u"13"_s, u"13"_s},        {0, u"    "_s, u"13"_s, u"13"_s}, {0, u"55"_s, u"55"_s, u"0"_s},
        {0, u" A-7 "_s, u" A-7 "_s, u"0"_s}, {12, u"77"_s, u"77"_s, u"12"_s},  {12, u""_s, u"12"_s, u"12"_s},
        {12, u"  "_s, u"12"_s, u"12"_s},     {12, u" 8 "_s, u" 8 "_s, u"12"_s}};
    const QString row = u"| Žižka \"O'Hara\" |Dlouhá 1\r\nBrno||z@x.cz|\r\na|"_s;
    for (const auto& [edited, typed, stored, keyAfterwards] : cases) {
        SCOPED_TRACE(u"%1 '%2'"_s.arg(edited).arg(typed).toStdString());
        sql("DELETE FROM tUser; DELETE FROM sqlite_sequence; INSERT INTO tUser VALUES (7, 'Novák', 'Praha', "
            "NULL, NULL, NULL, NULL), (12, ' Žižka \"O''Hara\" ', 'Dlouhá 1' || char(13, 10) || 'Brno', '', "
            "'z@x.cz', char(13, 10) || 'a', '77')");
        frmUser form;
        QStringList texts = {u"77"_s,     u" Žižka \"O'Hara\" "_s, u""_s,
                             u"z@x.cz"_s, u"Dlouhá 1\nBrno"_s,     u"\na"_s};
        if (edited != 0) {
            load(form, edited);
            EXPECT_EQ(entered(form), texts);
        }
        texts[0] = typed;
        save(form, texts);
        const QString all =
            u"7|Novák|Praha|-|-|-|-\n12"_s + row + (edited != 0 ? stored : u"77\n13"_s + row + stored);
        EXPECT_EQ(customers(), all);
        EXPECT_EQ(key(form), keyAfterwards);
        save(form, {u"5"_s, u"   "_s, u"1"_s, u"2"_s, u"Brno"_s});
        EXPECT_EQ(outside.owner(), &form);
        EXPECT_EQ(outside.told(), u"Jméno musí být vyplněno!\r\n|64|Nelze uložit!"_s);
        save(form, {u"5"_s, u""_s, {}, {}, u"  "_s});
        EXPECT_EQ(outside.told(),
                  u"Jméno musí být vyplněno!\r\nAdresa musí být vyplněno!\r\n|64|Nelze uložit!"_s);
        EXPECT_EQ(customers(), all);
    }
}

TEST_F(FrmUserTest, TextsAreLimitedAndALineBreakCountsAsTwo) {
    frmUser form;
    form.show();
    for (const char* name : lineBoxes) {
        QTest::keyClicks(&control<QLineEdit>(form, name), QString(60, u'x'));
        const int most = name == lineBoxes[0] ? 10 : 50;
        EXPECT_EQ(control<QLineEdit>(form, name).text().size(), most);
        auto& box = control<QLineEdit>(form, name);
        box.backspace();
        box.insert(u"😀"_s);
        EXPECT_EQ(box.text(), QString(most - 1, u'x'));
    }
    for (const char* name : pageBoxes) {
        SCOPED_TRACE(name);
        auto& box = control<QPlainTextEdit>(form, name);
        const auto paste = [&](const QString& text) {
            QApplication::clipboard()->setText(text);
            box.paste();
        };
        QTest::keyClicks(&box, QString(49, u'x'));
        QTest::keyClick(&box, Qt::Key_Return);
        paste(u"😀"_s);
        QTest::keyClicks(&box, u"yz"_s);
        EXPECT_EQ(box.toPlainText(), QString(49, u'x') + u'y');

        box.selectAll();
        QTest::keyClicks(&box, u"a  b"_s);
        QTextCursor between = box.textCursor();
        between.setPosition(2);
        box.setTextCursor(between);
        paste(QString(20, u'c') + u"\n\n"_s + QString(40, u'd'));
        EXPECT_EQ(box.toPlainText(), u"a "_s + QString(20, u'c') + u"\n\n"_s + QString(22, u'd') + u" b"_s);
        EXPECT_EQ(box.textCursor().position(), 46);
        box.undo();
        EXPECT_EQ(box.toPlainText(), u"a  b"_s);
    }
}

TEST_F(FrmUserTest, StoredTextsThatNoBoxHoldsAreKeptUntilTheyAreChanged) {
    sql("INSERT INTO tUser SELECT 3, 'J' || char(10) || replace(hex(zeroblob(30)), '0', 'n'),"
        " 'a' || char(10) || 'b' || char(160) || replace(hex(zeroblob(30)), '0', 'x'), '1', '2',"
        " replace(hex(zeroblob(30)), '0', 'p'), '123456789012345'");
    QString expected = customers();
    frmUser form;
    load(form, 3);
    click(form, "cmdSave");
    EXPECT_EQ(customers(), expected);

    form.show();
    control<QPlainTextEdit>(form, "txtUSADR").moveCursor(QTextCursor::End);
    QTest::keyClicks(&control<QPlainTextEdit>(form, "txtUSADR"), u"zz"_s);  // there is no room
    QTest::keyClick(&control<QLineEdit>(form, "txtUSREGNUM"), Qt::Key_End);
    QTest::keyClick(&control<QLineEdit>(form, "txtUSREGNUM"), Qt::Key_Backspace);
    QTest::keyClick(&control<QPlainTextEdit>(form, "txtUSPOZN"), Qt::Key_Delete);
    click(form, "cmdSave");
    EXPECT_EQ(customers(), expected.replace(u"p|123456789012345"_s, u"|12345678901234"_s));
}

TEST_F(FrmUserTest, AMissingCustomerIsReportedAndAMissingCatalogueIsNot) {
    sql("INSERT INTO tUser (USID, USNAME, USADR, USREGNUM) VALUES (7, 'Novák', 'Praha', '7')");
    const QString notFound = u"Záznam k úpravě nenalezen!|16|Chyba zápisu uživatele:"_s;
    frmUser form;
    load(form, 99);
    EXPECT_EQ(outside.owner(), &form);
    EXPECT_EQ(outside.told(), notFound);
    EXPECT_EQ(entered(form).join(u""_s), u""_s);
    QTest::keyClicks(form.focusWidget(), u"x"_s);
    EXPECT_EQ(entered(form).join(u""_s), u""_s);
    EXPECT_EQ(form.focusWidget(), &control<QWidget>(form, "cmdStorno"));
    load(form, 7);
    sql("DELETE FROM tUser; INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES (8, 'Jiný', '8')");
    for (const QString& code : {u"5"_s, u""_s}) {
        save(form, {code, u"Novák"_s, {}, {}, u"Praha"_s});
        EXPECT_EQ(outside.told(), notFound);
        EXPECT_EQ(key(form), u"7"_s);
    }
    form.setUSID(0);
    ASSERT_TRUE(QFile::rename(catalogue(), at(u"away"_s)));
    save(form, {{}, u"Novák"_s, {}, {}, u"Praha"_s});
    EXPECT_EQ(key(form), u"0"_s);
    EXPECT_EQ(outside.told(), u""_s);
    EXPECT_FALSE(Err.pending());
    ASSERT_TRUE(QFile::rename(at(u"away"_s), catalogue()));
    EXPECT_EQ(customers(), u"8|Jiný|-|-|-|-|8"_s);
}

TEST_F(FrmUserTest, ACustomerThatCouldNotBeReadIsNotStoredOver) {
    sql("INSERT INTO tUser (USID, USNAME, USADR, USPHONE) VALUES (7, 'Novák', 'Praha', '123')");
    const QString before = customers();
    frmUser form;
    const QString away = at(u"away"_s);
    ASSERT_TRUE(QFile::rename(catalogue(), away));
    load(form, 7);
    ASSERT_TRUE(QFile::rename(away, catalogue()));
    EXPECT_FALSE(control<QWidget>(form, "txtUSADR").isEnabled());
    save(form, {{}, u"Novák"_s, {}, {}, u"Praha"_s});
    EXPECT_EQ(outside.told().count(u"Záznam k úpravě nenalezen!"_s), 2);
    EXPECT_EQ(customers(), before);
    load(form, 7);
    save(form, {u"7"_s, u"Novák"_s, {}, {}, u"Brno"_s});
    EXPECT_EQ(customers(), u"7|Novák|Brno||||7"_s);
}

TEST_F(FrmUserTest, EscapeLeavesOnlyAFormWithoutChanges) {
    sql("INSERT INTO tUser (USID, USNAME, USADR, USREGNUM) VALUES (7, 'Novák', 'Praha', '7')");
    frmUser form;
    for (const qint32 customer : {0, 7}) {
        for (const char* name :
             {"txtUSREGNUM", "txtUSNAME", "txtUSPHONE", "txtUSMAIL", "txtUSADR", "txtUSPOZN"}) {
            load(form, customer);
            auto& box = control<QWidget>(form, name);
            QTest::keyClick(&box, Qt::Key_End);
            for (const bool changed : {true, false}) {
                changed ? QTest::keyClicks(&box, u"x"_s) : QTest::keyClick(&box, Qt::Key_Backspace);
                QTest::keyClick(&box, Qt::Key_Escape);
                EXPECT_EQ(form.isVisible(), changed) << name;
            }
        }
    }
    save(form, {u"7"_s, u"Jiný"_s, {}, {}, u"Brno"_s});
    form.show();
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FrmUserTest, AHiddenFormKeepsItsTextsUntilItsWindowIsClosed) {
    SharedUser user;
    frmUser& form = user.loaded();
    save(form, {{}, u"První"_s, {}, {}, u"Brno"_s});
    EXPECT_EQ(&user.loaded(), &form);
    EXPECT_EQ(entered(form)[1], u"První"_s);
    save(form, {{}, u"Druhý"_s, {}, {}, u"Brno"_s});  // the same customer again

    form.show();
    form.close();
    EXPECT_EQ(entered(form).join(u""_s) + key(form), u"0"_s);
    for (int again = 0; again < 2; ++again)  // with a code, another customer each time
        save(form, {u"5"_s, u"Třetí"_s, {}, {}, u"Brno"_s});
    EXPECT_EQ(customers(), u"1|Druhý|Brno||||1\n2|Třetí|Brno||||5\n3|Třetí|Brno||||5"_s);

    form.show();
    enter(form, {u"6"_s, u"Zrušený"_s, {}, {}, u"Brno"_s});
    click(form, "cmdStorno");
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(entered(form)[1], u"Zrušený"_s);
    user.unload();
    EXPECT_EQ(entered(user.loaded()).join(u""_s), u""_s);
    EXPECT_EQ(number("SELECT count(*) FROM tUser"), 3);
}
