#include "printing/frmTisknout.h"

#include "support/TemporaryProgram.h"
#include "support/windows.h"

namespace {

class FrmTisknoutTest : public TemporaryProgram {
 protected:
    FrmTisknoutTest() {
        sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Delka, Stat, Rok, Jazyk, Obsah, Herci) VALUES"
            " (1, '10', '@C', '', '', '', '', 0, '', ''), (2, '9', '@A', '', '', '', '', 0, '', ''),"
            " (3, '8', '@D', '', '', '', '', 0, '', '')");
        window.show();
    }
    /// The titles of the films in the list.
    QString printed() const {
        const QByteArray list = content(u"data/test.htm"_s);
        QString letters;
        for (qsizetype at = 0; (at = list.indexOf('@', at + 1)) > 0;)
            letters += QChar::fromLatin1(list[at + 1]);
        return letters;
    }

    frmTisknout window;
};

}  // namespace

TEST_F(FrmTisknoutTest, ASecondPressRunsWithinTheFirstAndTheWindowClosesAfterBoth) {
    QTimer::singleShot(0, &window, [this] {
        EXPECT_TRUE(outside.opened.isEmpty());
        click(window, "Command2");
        EXPECT_EQ(outside.opened.size(), 1);
        EXPECT_EQ(printed(), u"DAC"_s);
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
    });
    click(window, "Command1");
    EXPECT_EQ(printed(), u"DACCD"_s);  // the first list goes on behind the second
    EXPECT_EQ(outside.opened.size(), 2);
    EXPECT_FALSE(window.isVisible());
}
