#include <QImage>

#include "system/RealProgram.h"

using namespace Qt::StringLiterals;

namespace {

const QString editorWindow = u"^DVD Film$"_s;
const QString fileDialog = u"^Na.*ten.* obr.*zku$"_s;

class FilmTest : public RealProgram {
 protected:
    QString picture(const QString& name, QRgb colour) const {
        QImage image(200, 300, QImage::Format_RGB32);
        image.fill(colour);
        QString path = folder() + u'/' + name;
        EXPECT_TRUE(image.save(path));
        return path;
    }

    /// Chooses a file in the dialog that a button of the editor opens.
    void choose(const QString& editor, int x, int y, const QString& path) {
        screen.click(editor, x, y);
        const QString dialog = screen.waitForWindow(fileDialog);
        ASSERT_FALSE(dialog.isEmpty());
        screen.type(dialog, path);
        screen.press(dialog, {u"Return"_s});
        ASSERT_TRUE(screen.waitUntilGone(fileDialog));
    }

    QString film() const {
        return text(
            "SELECT DVDID || ';' || KatCisl || ';' || CZJm || ';' || PuvJm || ';' || Zanr || ';' || "
            "DiskPocet || "
            "';' || Obsah || ';' || Jazyk || ';' || Stat || ';' || Rezie || ';' || Delka || ';' || Rok || "
            "';' || "
            "Oddel_ID || ';' || Herci || ';' || Poznamka || ';' || Nabidka || ';' || JazykDetail || ';' || "
            "Titulky || ';' || Obal_ID || ';' || Nahled_ID FROM tDVD");
    }

    qint64 pictureBytes(const char* group) const {
        const sqlite::Database database(pictures(), sqlite::Database::Mode::readWrite);
        return database.number(
            (QByteArray("SELECT PicSize FROM tPicture WHERE PicSkup='") + group + "'").constData());
    }
};

}  // namespace

TEST_F(FilmTest, AFilmWithEverythingIsThereAfterARestartAndCanBeChanged) {
    const QString cover = picture(u"obal.png"_s, qRgb(180, 30, 30));
    const QString preview = picture(u"nahled.jpg"_s, qRgb(30, 30, 180));
    auto program = start();
    QString window = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(window.isEmpty());
    screen.click(window, 40, 38);  // "Nový"
    QString editor = screen.waitForWindow(editorWindow);
    ASSERT_FALSE(editor.isEmpty());
    screen.type(editor, u"K 7"_s);
    screen.press(editor, {u"Tab"_s, u"Tab"_s});
    screen.type(editor, u"Cap & rak"_s);
    screen.click(editor, 250, 116);
    screen.type(editor, u"Stork"_s);
    screen.press(editor, {u"Tab"_s, u"Tab"_s, u"space"_s});  // the panel of genres
    screen.press(editor, {u"space"_s, u"Down"_s, u"Down"_s, u"space"_s, u"Return"_s});
    screen.press(editor, {u"Tab"_s, u"BackSpace"_s});
    screen.type(editor, u"2"_s);
    screen.press(editor, {u"Tab"_s});
    screen.type(editor, u"popis filmu"_s);
    screen.press(editor, {u"Tab"_s, u"Right"_s});  // the second language
    screen.click(editor, 198, 84);                 // "Další informace"
    screen.click(editor, 200, 116);
    screen.type(editor, u"USA"_s);
    screen.press(editor, {u"Tab"_s});
    screen.type(editor, u"1999"_s);
    screen.press(editor, {u"Tab"_s});
    screen.type(editor, u"Jan Novak"_s);
    screen.press(editor, {u"Tab"_s});
    screen.type(editor, u"118 min."_s);
    screen.press(editor, {u"Tab"_s, u"Down"_s, u"Tab"_s});
    screen.type(editor, u"Herci"_s);
    screen.press(editor, {u"Tab"_s});
    screen.type(editor, u"Pozn"_s);
    screen.click(editor, 310, 84);  // "Menu / Zvuk / Titulky"
    screen.press(editor, {u"Tab"_s, u"Tab"_s});
    screen.click(editor, 33, 140);   // "s menu"
    screen.click(editor, 178, 140);  // "Česky"
    screen.click(editor, 338, 140);  // "české titulky"
    screen.click(editor, 398, 84);   // "Obal"
    choose(editor, 38, 332, cover);
    choose(editor, 342, 332, preview);
    screen.click(editor, 412, 372);  // "Uložit"
    ASSERT_TRUE(screen.waitUntilGone(editorWindow));
    screen.press(window, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    const QString saved =
        u"1;K 7;Cap & rak;Stork;Akční, Dobrodružný;2;popis filmu;1;USA;Jan "
        u"Novak;118;1999;2;Herci;Pozn;A|N|N|N|N;"
        "A|N|N|N|N|N|N|N|N;A|N|N|N|N|N|N;1;2"_s;
    EXPECT_EQ(film(), saved);
    EXPECT_EQ(pictureBytes("O"), QFileInfo(cover).size());
    EXPECT_EQ(pictureBytes("N"), QFileInfo(preview).size());
    EXPECT_EQ(settings().value(u"Settings/Covers"_s).toString(), folder() + u'/');

    program = start();
    window = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(window.isEmpty());
    screen.click(window, 112, 38);  // "Uprav", the first row being the selected one
    editor = screen.waitForWindow(editorWindow);
    ASSERT_FALSE(editor.isEmpty());
    screen.press(editor, {u"Tab"_s, u"Tab"_s, u"End"_s});
    screen.type(editor, u" 2"_s);
    screen.press(editor, {u"Return"_s});
    ASSERT_TRUE(screen.waitUntilGone(editorWindow));
    screen.press(window, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    EXPECT_EQ(film(), QString(saved).replace(u"Cap & rak"_s, u"Cap & rak 2"_s));
    QFile out(folder() + u"/data/obal.png"_s);
    QFile in(cover);
    ASSERT_TRUE(out.open(QFile::ReadOnly) && in.open(QFile::ReadOnly));
    EXPECT_EQ(out.readAll(), in.readAll());
}
