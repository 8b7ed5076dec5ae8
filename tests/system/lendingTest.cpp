#include "system/RealProgram.h"

using namespace Qt::StringLiterals;

namespace {

class LendingTest : public RealProgram {
 protected:
    void addCustomer(const QString& rental, const QString& code, const QString& name) {
        screen.click(rental, 300, 36);
        const QString form = screen.waitForWindow(u"^U.*ivatel$"_s);
        ASSERT_FALSE(form.isEmpty());
        if (!code.isEmpty()) screen.type(form, code);
        screen.press(form, {u"Tab"_s});
        screen.type(form, name);
        screen.press(form, {u"Tab"_s});
        screen.type(form, u"Praha"_s);
        screen.press(form, {u"Tab"_s, u"Return"_s});
        ASSERT_TRUE(screen.waitUntilGone(u"^U.*ivatel$"_s));
    }

    /// Goes to a film by keys and chooses "Zapůjčit / Vrátit"; then answers the window that opens.
    void lendOrReturn(const QString& master, const QStringList& toFilm, const QString& opened,
                      const QStringList& answer) {
        screen.press(master, toFilm + QStringList{u"Menu"_s, u"z"_s});
        const QString window = screen.waitForWindow(opened);
        ASSERT_FALSE(window.isEmpty());
        screen.press(window, answer);
        ASSERT_TRUE(screen.waitUntilGone(opened));
    }

    QString loans() {
        return text(
            "SELECT group_concat(P_UID || '/' || P_DVDID || iif(PDatVraceni IS NULL, '', ' back'), ', ')"
            " FROM (SELECT * FROM tPujcky WHERE PDatPujcky IS NOT NULL ORDER BY P_ID)");
    }
};

}  // namespace

TEST_F(LendingTest, LoansOfBothWindowsAreStoredUnderTheirOwnNumbersAndOutliveARestart) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES (1, '1', 'Aaa', 0), (2, '2', 'Bbb', 0),"
        " (3, '3', 'Ccc', 0), (4, '4', 'Ddd', 0), (5, '5', 'Eee', 0)");
    auto program = start();
    const QString master = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(master.isEmpty());
    screen.press(master, {u"alt+p"_s, u"m"_s});
    const QString rental = screen.waitForWindow(u"^P.*j.*ovna$"_s);
    ASSERT_FALSE(rental.isEmpty());
    addCustomer(rental, u""_s, u"Adam"_s);
    addCustomer(rental, u"40"_s, u"Bohumil"_s);
    addCustomer(rental, u""_s, u"Cyril"_s);

    const QString dialog = u"^Zap.*j.*it: "_s;
    lendOrReturn(master, {u"End"_s}, dialog, {u"Return"_s});
    lendOrReturn(master, {u"End"_s, u"Up"_s}, dialog, {u"Down"_s, u"Return"_s});
    screen.click(rental, 100, 107);  // Bohumil
    screen.click(rental, 185, 283);  // "Půjčit"
    screen.press(rental, {u"space"_s, u"shift+Down"_s, u"shift+Down"_s, u"Tab"_s, u"Return"_s});
    screen.click(rental, 250, 283);  // "Vrátit"
    screen.press(rental, {u"space"_s, u"Tab"_s, u"Return"_s});
    lendOrReturn(master, {u"End"_s}, u"^Ov.*en.*$"_s, {u"Return"_s});
    screen.press(master, {u"alt+d"_s, u"k"_s});
    ASSERT_TRUE(screen.waitUntilGone(mainWindow));
    screen.press(rental, {u"Escape"_s});  // the last window
    expectEnd(*program, 0);
    const QString stored = u"1/5 back, 2/4, 40/1 back, 40/2, 40/3"_s;
    EXPECT_EQ(loans(), stored);
    EXPECT_EQ(text("SELECT group_concat(USID || ' ' || USREGNUM || ' ' || USNAME || ' ' || USADR, ', ') FROM "
                   "tUser"),
              u"1 1 Adam Praha, 2 40 Bohumil Praha, 3 3 Cyril Praha"_s);

    program = start();
    screen.press(screen.waitForWindow(mainWindow), {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    EXPECT_EQ(loans(), stored);
}
