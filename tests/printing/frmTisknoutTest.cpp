#include "printing/frmTisknout.h"

#include "support/TemporaryProgram.h"
#include "support/windows.h"

using namespace Qt::StringLiterals;

namespace {

class FrmTisknoutTest : public TemporaryProgram {
 protected:
    FrmTisknoutTest() {
        sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Delka, Stat, Rok, Jazyk, Obsah, Herci) SELECT *, "
            "'', '', '', '', 0, '', '' FROM (VALUES (1, '8', 'Chata'), (2, '10', 'Alibi'), (3, '9', 'Dům'))");
        window.show();
    }

    /// The first letters of the films of the list, in its order.
    QString printed() const {
        const QByteArray list = content(u"data/test.htm"_s);
        QMap<qsizetype, QChar> places;
        for (const QByteArray& title : {QByteArray("Chata"), QByteArray("Alibi"), QByteArray("D\xF9m")}) {
            for (qsizetype at = list.indexOf(title); at >= 0; at = list.indexOf(title, at + 1))
                places[at] = QChar::fromLatin1(title[0]);
        }
        QString letters;
        for (const QChar letter : places)
            letters += letter;
        return letters;
    }

    frmTisknout window;
};

}  // namespace

TEST_F(FrmTisknoutTest, KeysPressTheButtonsOnceAndLeaveTheWindow) {
    auto& byNumber = control<QPushButton>(window, "Command2");
    byNumber.setFocus();
    QTest::keyClick(&byNumber, Qt::Key_Return);
    EXPECT_EQ(printed(), u"DAC"_s);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
    QApplication::sendEvent(&window, &held);
    EXPECT_EQ(outside.opened.size(), 1);
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmTisknoutTest, ASecondPressRunsWithinTheFirstAndTheWindowClosesWhenBothAreDone) {
    QTimer::singleShot(0, &window, [this] {
        EXPECT_TRUE(outside.opened.isEmpty());
        click(window, "Command2");
        EXPECT_EQ(outside.opened.size(), 1);
        EXPECT_EQ(printed(), u"DAC"_s);
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
    });
    click(window, "Command1");
    EXPECT_EQ(printed(), u"DACDC"_s);
    EXPECT_EQ(outside.opened.size(), 2);
    EXPECT_FALSE(window.isVisible());
}
