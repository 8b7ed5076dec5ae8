#include "platform/paths.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <optional>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

/// A folder of an ordinary user, as the rights of files do not hold for root.
class Paths : public testing::Test {
 public:
    Paths(const Paths&) = delete;
    Paths& operator=(const Paths&) = delete;

 protected:
    Paths() {
        EXPECT_EQ(root_ ? setresuid(65534, 65534, 0) : 0, 0);
        folder_.emplace();
        EXPECT_TRUE(folder_->isValid());
    }
    ~Paths() override { EXPECT_EQ(root_ ? setresuid(0, 0, 0) : 0, 0); }

    QString at(const QString& path) const { return folder_->path() + u'/' + path; }
    void makeFolder(const QString& path) const { ASSERT_TRUE(QDir().mkpath(at(path))); }
    void makeFile(const QString& path, const QByteArray& content, mode_t mode = 0644) const {
        makeFolder(QFileInfo(path).path());
        QFile file(at(path));
        ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write(content) == content.size());
        ASSERT_EQ(fchmod(file.handle(), mode), 0);
    }
    /// What lies in a folder, hidden things included: names, and of files the rights and the content.
    QStringList contents(const QString& path) const {
        QStringList found;
        const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        for (const QFileInfo& entry : QDir(at(path)).entryInfoList(all)) {
            QFile file(entry.filePath());
            struct stat state {};
            if (file.open(QFile::ReadOnly)) fstat(file.handle(), &state);
            found += entry.isDir()
                         ? entry.fileName()
                         : u"%1 %2 %3"_s.arg(entry.fileName(), QString::number(state.st_mode & 07777, 8),
                                             QString::fromUtf8(file.readAll()));
        }
        return found;
    }
    QString choose(const QStringList& readyMade) const {
        return paths::chooseProgramFolder(at(u"program"_s), at(u"home/kalvera"_s), readyMade);
    }

 private:
    const bool root_ = geteuid() == 0;
    std::optional<QTemporaryDir> folder_;
};

}  // namespace

TEST_F(Paths, DirNamesFilesOnly) {
    makeFile(u"data/film.htm"_s, "x");
    EXPECT_EQ(paths::Dir(at(u"data/film.htm"_s)), u"film.htm"_s);
    for (const QString& other : {at(u"data"_s), at(u"data/"_s), at(u"data/missing.htm"_s), QString()})
        EXPECT_EQ(paths::Dir(other), QString());
}

TEST_F(Paths, LetterCaseOfAFileNameDoesNotCount) {
    for (const QString& name : {u"Žába.HTM"_s, u"two.htm"_s, u"TWO.htm"_s, u"Folder/x"_s})
        makeFile(u"data/"_s + name, "x");
    EXPECT_EQ(paths::ignoringCase(at(u"data/žÁBA.htm"_s)), at(u"data/Žába.HTM"_s));
    for (const QString& same : {u"data/Žába.HTM"_s, u"data/two.htm"_s, u"data/TWO.htm"_s, u"data/zaba.htm"_s,
                                u"data/FOLDER"_s, u"none/two.htm"_s})
        EXPECT_EQ(paths::ignoringCase(at(same)), at(same));
}

TEST_F(Paths, ProgramPathsAreWrittenWithTheSeparatorOfTheTarget) {
    paths::setProgramFolder(at(u"x/../program/"_s));
    EXPECT_EQ(paths::programFolder(), at(u"program"_s));
    EXPECT_EQ(paths::inProgramFolder(u"\\data\\test.htm"), at(u"program/data/test.htm"_s));
}

TEST_F(Paths, BackslashInTheNameOfTheProgramFolderIsKept) {
    makeFolder(u"odd\\name/data"_s);
    paths::setProgramFolder(at(u"odd\\name"_s));
    EXPECT_TRUE(QFileInfo(paths::inProgramFolder(u"\\data")).isDir());
}

TEST_F(Paths, DataBesideTheExecutableAreUsedWhenTheyCanBeWritten) {
    makeFolder(u"program/data"_s);
    makeFile(u"ready/data.ddb"_s, "fresh");
    EXPECT_EQ(choose({at(u"ready"_s)}), at(u"program"_s));
    EXPECT_EQ(contents(u"program/data"_s), QStringList());
    EXPECT_FALSE(QFileInfo::exists(at(u"home"_s)));
}

TEST_F(Paths, OtherwiseTheUserGetsAPrivateCopyOfTheFirstReadyMadeData) {
    makeFile(u"ready/data.ddb"_s, "fresh", 0444);
    makeFile(u"ready/pictures.ddb"_s, "pictures", 0666);
    makeFile(u"later/data.ddb"_s, "later");
    for (const bool readOnly : {false, true}) {
        SCOPED_TRACE(readOnly ? "read-only data" : "no data");
        if (readOnly) {
            makeFolder(u"program/data"_s);
            ASSERT_EQ(chmod(at(u"program/data"_s).toUtf8().constData(), 0555), 0);
        }
        EXPECT_EQ(choose({at(u"missing"_s), at(u"ready"_s), at(u"later"_s)}), at(u"home/kalvera"_s));
        EXPECT_EQ(contents(u"home/kalvera"_s), QStringList{u"data"_s});
        EXPECT_EQ(contents(u"home/kalvera/data"_s),
                  QStringList({u"data.ddb 600 fresh"_s, u"pictures.ddb 600 pictures"_s}));
        ASSERT_TRUE(QDir(at(u"home"_s)).removeRecursively());
    }
}

TEST_F(Paths, DataFilesThatTheUserHasAreNeverTouched) {
    makeFile(u"ready/data.ddb"_s, "fresh");
    makeFile(u"ready/help.chm"_s, "newer", 0444);
    makeFile(u"home/kalvera/data/note.htm"_s, "his own", 0644);
    EXPECT_EQ(choose({at(u"ready"_s)}), at(u"home/kalvera"_s));
    EXPECT_EQ(contents(u"home/kalvera/data"_s),
              QStringList({u"help.chm 600 newer"_s, u"note.htm 644 his own"_s}));
    makeFile(u"home/kalvera/data/data.ddb"_s, "mine", 0640);
    makeFile(u"home/kalvera/data/help.chm"_s, "older", 0600);
    EXPECT_EQ(choose({at(u"ready"_s)}), at(u"home/kalvera"_s));
    EXPECT_EQ(contents(u"home/kalvera/data"_s),
              QStringList({u"data.ddb 640 mine"_s, u"help.chm 600 newer"_s, u"note.htm 644 his own"_s}));
}

TEST_F(Paths, APageThatCannotBeRefreshedDoesNotHinderTheStart) {
    makeFile(u"ready/a.htm"_s, "unreadable", 0000);
    makeFile(u"ready/b.htm"_s, "newer");
    makeFile(u"home/kalvera/data/a.htm"_s, "older", 0600);
    EXPECT_EQ(choose({at(u"ready"_s)}), at(u"home/kalvera"_s));
    EXPECT_EQ(contents(u"home/kalvera/data"_s), QStringList({u"a.htm 600 older"_s, u"b.htm 600 newer"_s}));
}

TEST_F(Paths, WithoutReadyMadeDataNoneAreInvented) {
    EXPECT_EQ(choose({at(u"missing"_s)}), at(u"home/kalvera"_s));
    EXPECT_FALSE(QFileInfo::exists(at(u"home/kalvera/data"_s)));
}

TEST_F(Paths, NothingIsLeftOfACopyThatFails) {
    makeFile(u"ready/data.ddb"_s, "fresh");
    makeFile(u"ready/pictures.ddb"_s, "unreadable", 0000);
    EXPECT_EQ(failureOf([&] { choose({at(u"ready"_s)}); }), 75);
    EXPECT_EQ(contents(u"home/kalvera"_s), QStringList());
    ASSERT_TRUE(QDir(at(u"home"_s)).removeRecursively());
    makeFile(u"home"_s, "in the way");
    EXPECT_EQ(failureOf([&] { choose({at(u"ready"_s)}); }), 75);
}
