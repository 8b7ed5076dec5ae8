#include "system/RealProgram.h"

using namespace Qt::StringLiterals;

namespace {

class ListTest : public RealProgram {};

}  // namespace

TEST_F(ListTest, FilmsAreFoundReturnedAndDeletedAndDraggedColumnsComeBack) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES (1, '1', 'Aaa', 0), (2, '20', 'Bbb', 0), (3, "
        "'3', 'Ccc', 0);"
        "INSERT INTO tUser (USID, USNAME) VALUES (1, 'Novák');"
        "INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (1, 2, '2026-02-03 10:00:00'),"
        " (1, 3, '2026-02-04 10:00:00')");
    auto program = start();
    QString window = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(window.isEmpty());
    // The edge between the first two columns, 40 pixels to the right.
    screen.drag(window, QPoint(63, 69), QPoint(103, 69));
    screen.click(window, 320, 38);  // "Vyhledat"
    const QString prompt = screen.waitForWindow(u"^Naj.*t v .*m n.*zvu$"_s);
    ASSERT_FALSE(prompt.isEmpty());
    screen.type(prompt, u"ccc"_s);
    screen.press(prompt, {u"Return"_s});
    ASSERT_TRUE(screen.waitUntilGone(u"^Naj.*t v .*m n.*zvu$"_s));
    screen.click(window, 210, 38);  // "Půjčit / Vrátit"
    QString question = screen.waitForWindow(u"^Ov.*en.*$"_s);
    ASSERT_FALSE(question.isEmpty());
    screen.press(question, {u"Return"_s});
    ASSERT_TRUE(screen.waitUntilGone(u"^Ov.*en.*$"_s));

    screen.click(window, 120, 69);      // by title, downwards: Ccc, Bbb, Aaa
    screen.click(window, 120, 105, 3);  // the second row's menu
    screen.press(window, {u"s"_s});     // "Smazat"
    question = screen.waitForWindow(u"^Ov.*smaz.*$"_s);
    ASSERT_FALSE(question.isEmpty());
    screen.press(question, {u"Return"_s});
    ASSERT_TRUE(screen.waitUntilGone(u"^Ov.*smaz.*$"_s));
    screen.press(window, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    EXPECT_EQ(text("SELECT group_concat(CZJm) FROM tDVD"), u"Aaa,Ccc"_s);
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky"), 2);
    EXPECT_EQ(number("SELECT P_DVDID FROM tPujcky WHERE PDatVraceni IS NULL"), 2);
    const QString widths = settings().value(u"Settings/ColSie"_s).toString();
    EXPECT_TRUE(widths.startsWith(u"1500|2500|"_s)) << widths.toStdString();

    program = start();
    window = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(window.isEmpty());
    screen.press(window, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    EXPECT_EQ(settings().value(u"Settings/ColSie"_s).toString(), widths);
}
