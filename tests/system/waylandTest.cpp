#include <QHash>

#include "support/WaylandScreen.h"
#include "system/RealProgram.h"

namespace {

class WaylandTest : public RealProgramOn<WaylandScreen> {
 protected:
    WaylandTest() {
        // The search for leaks is left to the other screens: its list of exceptions may lie where the user
        // that the program runs as cannot read, and the libraries of Wayland are not in it.
        screen.environment.insert(u"ASAN_OPTIONS"_s,
                                  qEnvironmentVariable("ASAN_OPTIONS") + u":detect_leaks=0"_s);
        screen.environment.remove(u"LSAN_OPTIONS"_s);
        // The compositor tells nobody whose window is whose; the program's requests do.
        screen.environment.insert(u"WAYLAND_DEBUG"_s, u"client"_s);
        program.setProcessChannelMode(QProcess::SeparateChannels);
        program.setStandardErrorFile(at(u"requests"_s));
    }

    /// The title of the window that owned the last one with a title, by what the program asked for.
    QString ownerOf(const QString& title) const {
        static const QRegularExpression request(
            uR"re(-> xdg_toplevel[@#](\d+)\.set_(title|parent)\((?:"(.*)"|xdg_toplevel[@#](\d+)|nil)\))re"_s);
        QHash<QString, QString> titles;
        QHash<QString, QString> owners;
        for (auto at = request.globalMatch(QString::fromUtf8(content(u"requests"_s))); at.hasNext();) {
            const QRegularExpressionMatch match = at.next();
            const QString window = match.captured(1);
            if (match.captured(2) == u"title") titles[window] = match.captured(3);
            if (match.captured(2) == u"parent") owners[window] = titles.value(match.captured(4));
        }
        return owners.value(titles.key(title));
    }
};

}  // namespace

TEST_F(WaylandTest, AFilmIsAddedByKeysAndABoxHasItsOwner) {
    sql("INSERT INTO tDVD (KatCisl, CZJm, Jazyk) VALUES ('1', 'Žert', 0), ('2', 'Chyť doktora', 2)");
    start();
    const QString master = screen.waitForWindow(mainWindow);
    EXPECT_EQ(screen.find(mainWindow).value(u"app_id"_s).toString(), u"kalvera"_s);
    VirtualScreen::expect([this] { return screen.coloursAcross(60) > 20; }, u"the tool bars"_s);

    screen.press(master, u"alt+p m"_s);  // "Modul výpůjček"
    const QString rental = screen.waitForWindow(u"^Půjčovna$"_s);
    EXPECT_EQ(ownerOf(rental), master);
    screen.activate(mainWindow);

    screen.press(master, u"Menu s"_s);  // "Smazat", in the list
    const QString box = screen.waitForWindow(u"^Ověření požadavku na smazání\\.$"_s);
    EXPECT_EQ(ownerOf(box), master);
    screen.press(box, u"Return"_s);
    screen.waitUntilGone(box);
    screen.waitForWindow(mainWindow);

    screen.press(master, u"Tab Return"_s);  // "Nový"
    const QString editor = screen.waitForWindow(editorWindow);
    screen.press(editor, u"Tab Tab"_s);
    screen.type(editor, u"Čáp"_s);
    screen.press(editor, u"Return"_s);
    screen.waitUntilGone(editorWindow);
    screen.waitForWindow(mainWindow);
    EXPECT_EQ(text("SELECT CZJm FROM tDVD WHERE KatCisl = '3'"), u"Čáp"_s);

    screen.press(master, u"alt+d k"_s);  // "Konec"
    screen.waitUntilGone(mainWindow);
    screen.press(screen.waitForWindow(rental), u"Escape"_s);
    expectEnd(0);
    EXPECT_EQ(text("SELECT group_concat(CZJm) FROM (SELECT CZJm FROM tDVD ORDER BY DVDID)"), u"Žert,Čáp"_s);
}
