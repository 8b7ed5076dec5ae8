#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>

#include "platform/codepage.h"
#include "support/filmPages.h"
#include "support/pictures.h"
#include "system/RealProgram.h"

namespace {

/// The real program from start to end, with the check for a newer version.
class RoadTest : public RealProgram {
 protected:
    RoadTest() { settings().setValue(u"Settings/ShowNewVer"_s, u"A"_s); }

    void SetUp() override {
        ASSERT_TRUE(QDir(folder()).mkdir(u"bin"_s));
        // The program that the desktop opens files with keeps what it was given.
        write(u"bin/xdg-open"_s, (u"#!/bin/sh\ncp \"${1#file://}\" '%1' && mv '%1' '%2'\n"_s.arg(
                                      at(u"copying"_s), at(u"opened"_s)))
                                     .toUtf8());
        QFile::setPermissions(at(u"bin/xdg-open"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        screen.environment.insert(u"PATH"_s, at(u"bin:"_s) + qEnvironmentVariable("PATH"));
    }

    void serve(const QString& address, const QString& page) { web.serve(address, {.body = page.toUtf8()}); }
    /// The text of the page that the desktop opens.
    QString opened() const {
        QFile page(at(u"opened"_s));
        VirtualScreen::expect([&page] { return page.exists(); }, page.fileName());
        static const QRegularExpression tags(u"<[^>]*>"_s);
        const QString text = codepage::fromWindows1250(content(page.fileName()));
        page.remove();
        return QString(text).replace(tags, u" "_s).replace(u"&nbsp;"_s, u" "_s).simplified();
    }

    /// Waits for a file that is downloaded, and for the window that a slow download shows: it would take
    /// clicks.
    void waitForDownload(const QString& path) const {
        VirtualScreen::expect([&] { return QFile::exists(at(path)); }, path);
        screen.waitUntilGone(splash);  // has the same title
    }

    const QString question = sites.update + u"/podpora/files/dvdkalver.asp"_s;
};

}  // namespace

TEST_F(RoadTest, OneFilmGoesFromNothingToAPrintedList) {
    const QByteArray poster = pictureOf(qRgb(255, 0, 0), "PNG", {20, 30});
    serve(question, u"9999-0-0"_s);
    serve(sites.filmDb + u"/hledani-filmu-hercu-reziseru-ve-filmove-databazi/?search=dum"_s,
          filmPages::searchPage({{u"1-DUM/"_s, u"Dům"_s}}));
    serve(sites.filmDb + u"/film/1-DUM/"_s, filmPages::plainPage(u"87"_s));
    serve(sites.filmDb + u"/film/1-DUM/?text=87"_s, filmPages::fullPage({}, sites.filmDb2));
    serve(sites.filmDb2 + u"/title/tt0123456"_s, filmPages::imdbPage(u"Lost House (1999)"_s));
    web.serve(sites.filmDb + u"/posters/1/123.png"_s, {.body = poster, .type = "image/png"});

    start();
    const QString offer = screen.waitForWindow(u"^Nov.* verze je k dispozici!$"_s);
    const QString master = screen.waitForWindow(mainWindow);
    screen.press(offer, u"Escape"_s);
    screen.waitUntilGone(u"^Nov.* verze je k dispozici!$"_s);
    screen.click(master, 40, 38);  // "Nový"
    const QString editor = screen.waitForWindow(editorWindow);
    screen.press(editor, u"Tab Tab"_s);
    screen.type(editor, u"dum"_s);
    screen.click(editor, 510, 53);
    const QString lookup = screen.waitForWindow(u"^Vyhledat v .*SFD$"_s);
    screen.press(lookup, u"Return"_s);
    waitForDownload(u"data/list.find"_s);
    screen.click(lookup, 580, 366);  // "Načti data"
    waitForDownload(u"data/webnahl.png"_s);
    screen.click(lookup, 265, 366);  // "Vložit data"
    screen.waitUntilGone(u"^Vyhledat v .*SFD$"_s);
    screen.click(editor, 412, 372);  // "Uložit"
    screen.waitUntilGone(editorWindow);
    for (const QFileInfo& open : QDir(u"/proc/%1/fd"_s.arg(program.processId())).entryInfoList(QDir::System))
        EXPECT_FALSE(open.symLinkTarget().endsWith(u".ddb"_s)) << open.symLinkTarget().toStdString();

    sql("INSERT INTO tDVD (KatCisl, CZJm, Zanr, Jazyk) VALUES ('3', 'Žert', 'Drama', 0),"
        " ('2', 'Chyť doktora', 'Komedie', 2)");
    screen.click(master, 490, 38);  // "Tisknout"
    const QString lists = screen.waitForWindow(u"^Tisk seznamu$"_s);
    const QString head = u"DVD Seznam filmových disků Název Žánr Zvuk / titulky Kat. číslo"_s;
    const QString chyt = u" Chyť doktora Komedie Neuvedeno 2"_s;
    const QString dum = u" Ztracený dům Drama, Komedie Český dabing 1"_s;
    const QString zert = u" Žert Drama Český dabing 3"_s;
    const QString detailed =
        u"DVD Seznam DVD Ztracený dům (1) Žánr: Drama, Komedie Délka: 118 Stát: USA , Kanada Rok: 1999 Zvuk: "
        "Český dabing Příběh domu, který se ztratil. Herci: Žofie Černá, René & syn"_s;
    const std::pair<QPoint, QString> buttons[] = {{{90, 30}, head + chyt + dum + zert},
                                                  {{90, 90}, head + chyt + zert + dum},
                                                  {{260, 90}, head + dum + chyt + zert},
                                                  {{260, 30}, detailed}};
    for (const auto& [button, list] : buttons) {
        screen.click(lists, button.x(), button.y());
        EXPECT_EQ(opened(), list);
    }
    screen.press(lists, u"Escape"_s);
    leave();
    EXPECT_EQ(
        text("SELECT KatCisl || '|' || CZJm || '|' || PuvJm || '|' || Zanr || '|' || Stat || '|' || Rok "
             "|| '|' || Delka || '|' || Rezie || '|' || Herci || '|' || Obsah FROM tDVD WHERE DVDID=1"),
        u"1|Ztracený dům|Lost House|Drama, Komedie|USA , Kanada|1999|118|Jan Novák|"
        "Žofie Černá, René & syn|Příběh domu, který se ztratil."_s);
    EXPECT_EQ(text(pictures(), "SELECT PicDVDID || PicSkup || PicTyp || PicSize FROM tPicture"),
              u"1Npng%1"_s.arg(poster.size()));
    EXPECT_EQ(settings().value(u"Settings/ShowNewVer"_s), u"A"_s);
}

TEST_F(RoadTest, ASilentUpdateHostDoesNotKeepTheMainWindowAway) {
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    screen.environment.insert(u"http_proxy"_s, u"http://127.0.0.1:%1"_s.arg(silent.serverPort()));
    start();
    screen.waitForWindow(mainWindow);
    VirtualScreen::expect([&silent] { return silent.hasPendingConnections(); }, question);
    screen.waitForWindow(mainWindow);
    silent.pauseAccepting();
    silent.nextPendingConnection()->abort();
    silent.close();  // a second attempt is refused
    leave();
}

TEST_F(RoadTest, OnlyTheExactSettingAsksTheUpdateHostAndTheSplashEndsByItself) {
    serve(question, verze::text().replace(u'.', u'-'));
    for (const QString& setting : {u"N"_s, u"a"_s, u""_s, u"A"_s}) {
        SCOPED_TRACE(setting.toStdString());
        settings().setValue(u"Settings/ShowNewVer"_s, setting);
        const bool asks = setting == u"A";
        start(u"kalvera"_s, !asks);
        leave();
        EXPECT_EQ(web.targets(), asks ? QStringList{question} : QStringList());
    }
}

TEST_F(RoadTest, AnAnswerThatIsNoVersionEndsTheProgram) {
    serve(question, u"<html>Not found</html>"_s);
    start();
    screen.waitForWindow(mainWindow);
    screen.press(screen.waitForWindow(splash), u"Return"_s);  // the box has the title of the splash screen
    expectEnd(1);
}
