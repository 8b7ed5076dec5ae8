#include "platform/paths.h"

#include <QProcess>
#include <QTemporaryDir>

#include "platform/files.h"
#include "platform/restrictions.h"
#include "support/TemporaryProgram.h"

namespace {

/// A folder of an ordinary user.
class Paths : public testing::Test {
 protected:
    QString at(const QString& path) const { return folder_.path() + u'/' + path; }

    /// Runs a script in the folder, in which `put` makes a file. @return its output
    QString shell(const QString& script) const {
        QProcess program;
        program.setWorkingDirectory(folder_.path());
        program.start(
            u"sh"_s,
            {u"-c"_s, u"put() { mkdir -p $(dirname $1); printf \"$3\" > $1; chmod $2 $1; }\n"_s + script});
        EXPECT_TRUE(program.waitForFinished());
        return QString::fromUtf8(program.readAllStandardOutput());
    }

 private:
    const OrdinaryUser user_;  // before the folder, so that the user owns it
    const QTemporaryDir folder_;
};

using Files = TemporaryProgram;

}  // namespace

TEST_F(Paths, DirNamesFilesOnly) {
    shell(u"put data/film.htm 644"_s);
    EXPECT_EQ(paths::Dir(at(u"data/film.htm"_s)), u"film.htm"_s);
    for (const QString& other : {at(u"data"_s), at(u"data/"_s), at(u"data/missing.htm"_s), QString()})
        EXPECT_EQ(paths::Dir(other), QString());
}

TEST_F(Paths, FileIsFoundWhateverTheCaseOfItsName) {
    shell(u"mkdir -p data/Folder; touch data/Žába.HTM data/two.htm data/TWO.htm"_s);
    EXPECT_EQ(paths::ignoringCase(at(u"data/žÁBA.htm"_s)), at(u"data/Žába.HTM"_s));
    for (const QString& same : {u"data/Žába.HTM"_s, u"data/two.htm"_s, u"data/TWO.htm"_s, u"data/zaba.htm"_s,
                                u"data/FOLDER"_s, u"none/two.htm"_s})
        EXPECT_EQ(paths::ignoringCase(at(same)), at(same));
}

TEST_F(Paths, OnlyTheTailIsTurnedToTheSeparatorOfTheTarget) {
    paths::setProgramFolder(at(u"x/../odd\\name/"_s));
    EXPECT_EQ(paths::programFolder(), at(u"odd\\name"_s));
    EXPECT_EQ(paths::inProgramFolder(u"\\data\\test.htm"), at(u"odd\\name/data/test.htm"_s));
}

TEST_F(Paths, ProgramFolderIsChosenAndFilled) {
    // A script that makes what exists before; the folder chosen; the files and empty folders afterwards.
    const std::tuple<QString, QString, QString> cases[] = {
        {u"mkdir -p program/data; put ready/data.ddb 644 fresh"_s, u"program"_s, u"program/data/"_s},
        {u"put ready/data.ddb 444 fresh; put ready/pictures.ddb 666 bytes; put ready2/data.ddb 644 later"_s,
         u"home/own"_s, u"home/own/data/data.ddb 600 fresh,home/own/data/pictures.ddb 600 bytes,"_s},
        {u"mkdir -p program/data; chmod 555 program/data; put ready/data.ddb 444 fresh; "
         "put ready/pictures.ddb 644 bytes; put ready/data.ddb.dpkg-new 644 newer"_s,
         u"home/own"_s,
         u"home/own/data/data.ddb 600 fresh,home/own/data/pictures.ddb 600 bytes,program/data/"_s},
        {u"put ready/data.ddb 644 fresh; put ready/pictures.ddb 644 fresh; put ready/help.chm 444 newer; "
         "put ready/new.htm 644 new; put ready/new.htm.dpkg-tmp 644 old; "
         "put home/own/data/data.ddb 640 mine; put home/own/data/help.chm 600 older; "
         "put home/own/data/note.htm 644 own"_s,
         u"home/own"_s,
         u"home/own/data/data.ddb 640 mine,home/own/data/help.chm 600 newer,home/own/data/new.htm 600 new,"
         "home/own/data/note.htm 644 own,"_s},
        {u"put ready/a.htm 000; put ready/b.htm 644 newer; put home/own/data/a.htm 600 older"_s,
         u"home/own"_s, u"home/own/data/a.htm 600 older,home/own/data/b.htm 600 newer,"_s},
        {u""_s, u"home/own"_s, u""_s},
        {u"put ready/data.ddb 644 fresh; put ready/pictures.ddb 000"_s, u"failure 75"_s, u"home/own/"_s},
        {u"put ready/data.ddb 644 fresh; put ready/pictures.ddb.dpkg-new 644 fresh"_s, u"failure 75"_s,
         u""_s},
        {u"put ready/data.ddb 644 fresh; put ready/pictures.ddb 644 fresh; put home 644 'in the way'"_s,
         u"failure 75"_s, u"home 644 in the way,"_s}};
    for (const auto& [before, expected, after] : cases) {
        SCOPED_TRACE(before.toStdString());
        shell(before);
        QString chosen;
        const qint32 failure = failureOf([&] {
            chosen = paths::chooseProgramFolder(at(u"program"_s), at(u"home/own"_s),
                                                {at(u"missing"_s), at(u"ready"_s), at(u"ready2"_s)});
        });
        EXPECT_EQ(failure == 0 ? chosen : at(u"failure %1"_s.arg(failure)), at(expected));
        EXPECT_EQ(shell(u"find home program -type f -printf '%p %m ' -exec cat {} ';' -printf ',\\n' -o "
                        "-type d -empty -printf '%p/\\n' | sort | tr -d '\\n'; rm -rf *"_s),
                  after);
    }
}

TEST_F(Files, CopyReplacesTheTargetOrLeavesIt) {
    files::write(at(u"small"_s), {"one", "two"});
    files::write(at(u"large"_s), {QByteArray(300000, 'x')});
    EXPECT_EQ(QFile::permissions(at(u"small"_s)) & 0x0077, 0);
    files::copy(at(u"small"_s), at(u"target"_s));
    const std::tuple<QString, QString, qint32> cases[] = {{at(u"missing"_s), at(u"target"_s), 53},
                                                          {at(u"small"_s), at(u"no/target"_s), 75},
                                                          {folder(), at(u"target"_s), 53}};
    for (const auto& [from, to, failure] : cases)
        EXPECT_EQ(failureOf([&, from = from, to = to] { files::copy(from, to); }), failure);
    EXPECT_EQ(failureOf([&] { files::readAll(at(u"missing"_s)); }), 53);
    onFullDisk(200000,
               [this] { EXPECT_EQ(failureOf([&] { files::copy(at(u"large"_s), at(u"target"_s)); }), 61); });
    // So little that only the last buffer is written, when the file is closed.
    onFullDisk(3, [this] {
        EXPECT_EQ(failureOf([&] { files::copy(at(u"small"_s), at(u"target"_s)); }), 61);
        EXPECT_EQ(failureOf([&] { files::write(at(u"target"_s), {"three", "four"}); }), 61);
    });
    EXPECT_EQ(content(u"target"_s), "onetwo");
    files::copy(at(u"large"_s), at(u"target"_s));
    EXPECT_EQ(content(u"target"_s).size(), 300000);
}
