#include "printing/frmTisknout.h"

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "support/TemporaryProgram.h"
#include "support/clipped.h"

using namespace Qt::StringLiterals;

namespace {

class FrmTisknoutTest : public TemporaryProgram {
 protected:
    FrmTisknoutTest() {
        sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Delka, Stat, Rok, Jazyk, Obsah, Herci, Nahled_ID) "
            "VALUES (1, '8', 'Chata', '', '', '', '', 0, '', '', 0), (2, '10', 'Alibi', '', '', '', '', 0, "
            "'', "
            "'', 0), (3, '9', 'Dům', '', '', '', '', 0, '', '', 0)");
        window.show();
    }

    QPushButton& button(const char* name) const {
        return *window.findChild<QPushButton*>(QString::fromLatin1(name));
    }
    /// The first letters of the films of the list, in its order.
    QString printed() const {
        QFile file(folder() + u"/data/test.htm"_s);
        if (!file.open(QFile::ReadOnly)) return {};
        const QByteArray list = file.readAll();
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

TEST_F(FrmTisknoutTest, EachButtonMakesItsListAndTheWindowStays) {
    const struct {
        const char* button;
        QString order;
        bool detailed;
    } cases[] = {{"Command1", u"ADC"_s, false},
                 {"Command2", u"DAC"_s, false},
                 {"Command3", u"ACD"_s, false},
                 {"Command4", u"ADC"_s, true}};
    for (const auto& [name, order, detailed] : cases) {
        QTest::mouseClick(&button(name), Qt::LeftButton);
        EXPECT_EQ(printed(), order) << name;
        QFile list(folder() + u"/data/test.htm"_s);
        ASSERT_TRUE(list.open(QFile::ReadOnly));
        EXPECT_EQ(list.readAll().contains("Herci:"), detailed) << name;
    }
    EXPECT_EQ(outside.opened.size(), 4);
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_TRUE(window.isVisible());
    button("Command2").setFocus();
    QTest::keyClick(&button("Command2"), Qt::Key_Return);
    EXPECT_EQ(printed(), u"DAC"_s);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
    QApplication::sendEvent(&window, &held);
    EXPECT_EQ(outside.opened.size(), 5);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmTisknoutTest, ASecondPressRunsWithinTheFirstAndTheWindowClosesWhenBothAreDone) {
    QTimer::singleShot(0, &window, [this] {
        EXPECT_TRUE(outside.opened.isEmpty());
        QTest::mouseClick(&button("Command2"), Qt::LeftButton);
        EXPECT_EQ(outside.opened.size(), 1);
        EXPECT_EQ(printed(), u"DAC"_s);
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
    });
    QTest::mouseClick(&button("Command1"), Qt::LeftButton);
    EXPECT_EQ(printed(), u"DACDC"_s);
    EXPECT_EQ(outside.opened.size(), 2);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmTisknoutTest, CaptionsHaveRoomOnTwoLines) {
    EXPECT_EQ(window.size(), QSize(358, 120));
    for (const QPushButton* one : window.findChildren<QPushButton*>()) {
        const QRect needed = one->fontMetrics().boundingRect(
            QRect(0, 0, one->width() - 12, 1000), static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap,
            one->text());
        EXPECT_LE(needed.width(), one->width() - 12) << one->objectName().toStdString();
        EXPECT_LE(needed.height(), one->height() - 8) << one->objectName().toStdString();
    }
}
