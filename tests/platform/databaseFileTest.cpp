#include <QDir>
#include <QFile>
#include <QProcess>
#include <optional>

#include "core/mDatabase.h"
#include "platform/LockPatience.h"
#include "platform/restrictions.h"
#include "support/TemporaryProgram.h"

namespace {

constexpr qsizetype pageSize = 4096;

class DatabaseFileTest : public TemporaryProgram {
 protected:
    void SetUp() override {
        // More than one page for each table.
        sql("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<2000)"
            "INSERT INTO tDVD (KatCisl, CZJm, Obsah) SELECT i, 'Film ' || i, 'Popis ' || i FROM n");
        whole_ = content(catalogue());
    }

    /// Reads every film. @return the failure that ended this, or 0
    qint32 use() const {
        return failureOf([&] {
            ado::Connection opened;
            opened.Open(connectionString(catalogue()));
            ado::Recordset films;
            films.Open(u"SELECT * from tDVD Order by CZJM"_s, opened);
            for (; !films.Eof(); films.MoveNext())
                films.Fields(u"Obsah").Value();
        });
    }
    /// Reads a catalogue of these bytes, which must leave them as they are. @return as use() does
    qint32 use(const QByteArray& bytes) const {
        write(catalogue(), bytes);
        const qint32 failure = use();
        EXPECT_TRUE(content(catalogue()) == bytes);
        return failure;
    }
    /// The whole file with one page zeroed.
    QByteArray withoutPage(qsizetype at) const {
        return QByteArray(whole_).replace(at, pageSize, QByteArray(pageSize, '\0'));
    }

    QByteArray whole_;
};

}  // namespace

TEST_F(DatabaseFileTest, RefusesAForeignFileAndLeavesItAlone) {
    QByteArray foreign = whole_;
    foreign[68] = '\x11';  // the mark
    for (const QByteArray& bytes : {QByteArray(), QByteArray("Standard Jet DB"), QByteArray(5000, 'x'),
                                    QByteArray("SQLite format 3\0", 16), foreign,
                                    QByteArray(whole_).replace(18, 2, "\2\2")})  // a write-ahead log
        EXPECT_EQ(use(bytes), errors::database) << bytes.size();
    QFile::remove(catalogue());
    EXPECT_EQ(use(), errors::database);
    EXPECT_FALSE(QFile::exists(catalogue()));
}

TEST_F(DatabaseFileTest, OpensWithTheRightPasswordOnlyWhateverTheFolderIsCalled) {
    const QString odd = at(u"a;Jet OLEDB:Database Password=b; Data Source=c"_s);
    ASSERT_TRUE(QDir().mkpath(odd) && QFile::copy(catalogue(), odd + u"/data.ddb"_s));
    const QString right = connectionString(odd + u"/data.ddb"_s);
    ado::Connection opened;
    for (const QString& wrong : {right + u'x', right.chopped(10), right.chopped(10) + u"qelnbxvktr"_s})
        EXPECT_EQ(failureOf([&] { opened.Open(wrong); }), errors::databasePassword) << wrong.toStdString();
    EXPECT_EQ(failureOf([&] { opened.Open(catalogue()); }), errors::invalidCall);
    EXPECT_FALSE(opened.isOpen());
    opened.Open(right);
    EXPECT_TRUE(opened.isOpen());
}

TEST_F(DatabaseFileTest, DamageEndsInAFailureAndTheFileIsNeverChanged) {
    for (int byte = 0; byte < 200; ++byte) {
        QByteArray damaged = whole_;
        damaged[byte / 2] = static_cast<char>(damaged[byte / 2] ^ (byte % 2 == 0 ? 0xFF : 0x03));
        SCOPED_TRACE(byte / 2);
        use(damaged);
    }
    for (const qsizetype length : {pageSize / 2, pageSize, pageSize * 5, whole_.size() - pageSize})
        EXPECT_NE(use(whole_.first(length)), 0) << "cut to " << length;
    qsizetype noticed = 0;
    for (qsizetype at = 0; at < whole_.size(); at += pageSize)
        noticed += use(withoutPage(at)) != 0 ? 1 : 0;
    EXPECT_GT(noticed, whole_.size() / pageSize / 2);  // the rest belongs to tables that are not read
}

TEST_F(DatabaseFileTest, WalkStaysAtADamagedPageAndFailsAgain) {
    write(catalogue(), withoutPage(whole_.lastIndexOf("Popis 1500") / pageSize * pageSize));
    ado::Recordset films;
    films.Open(u"SELECT * from tDVD"_s, connection());
    int met = 0;
    while (failureOf([&] { films.MoveNext(); }) == 0)
        ++met;
    EXPECT_GT(met, 100);
    EXPECT_LT(met, 1600);
    EXPECT_EQ(failureOf([&] { films.MoveNext(); }), errors::database);
    EXPECT_EQ(failureOf([&] { films.RecordCount(); }), errors::database);
    EXPECT_EQ(films.Fields(u"DVDID").Value(), DbValue(met + 1));
}

TEST_F(DatabaseFileTest, OpeningAFileInUseKeepsItsLocks) {
    ado::Recordset films;
    films.Open(u"SELECT * from tDVD"_s, connection());
    ado::Connection second;
    second.Open(connectionString(catalogue()));
    second.Close();
    QProcess other;  // another process, as a process is not stopped by its own locks
    other.start(u"sqlite3"_s, {catalogue(), u"BEGIN EXCLUSIVE;"_s});
    ASSERT_TRUE(other.waitForFinished());
    EXPECT_TRUE(other.readAllStandardError().contains("locked"));
}

TEST_F(DatabaseFileTest, ReadOnlyFolderIsReadAndRefusesChanges) {
    const QString data = at(u"data"_s);
    ASSERT_TRUE(QFile::setPermissions(folder(), QFile::Permissions(0x7755)));
    ASSERT_TRUE(QFile::setPermissions(catalogue(), QFile::Permissions(0x6644)));
    ASSERT_TRUE(QFile::setPermissions(data, QFile::Permissions(0x5555)));
    {
        const OrdinaryUser user;
        EXPECT_EQ(use(), 0);
        ado::Recordset films;
        films.Open(u"SELECT * from tDVD WHERE DVDID=1"_s, connection());
        films.Fields(u"CZJm").setValue(u"Jinak"_s);
        EXPECT_EQ(failureOf([&] { films.Update(); }), errors::databaseReadOnly);
    }
    ASSERT_TRUE(QFile::setPermissions(data, QFile::Permissions(0x7755)));
    EXPECT_TRUE(content(catalogue()) == whole_);

    ASSERT_TRUE(QFile::setPermissions(catalogue(), QFile::Permissions()));
    const OrdinaryUser user;
    skipFailure([this] { ado::Connection().Open(connectionString(catalogue())); });
    EXPECT_EQ(Err.Description(), u"K souboru databáze nemáte oprávnění.\n\n"_s + catalogue());
    Err.Clear();
}

TEST(LockPatience, LastsFiveSecondsByTheClockAndNotAgainRightAfter) {
    using namespace std::chrono_literals;
    LockPatience patience;
    const auto lasts = [&](const char* file, int tries, std::chrono::milliseconds at) {
        return patience.lasts(file, tries, LockPatience::Clock::time_point(1h + at));
    };
    const struct {
        const char* file;
        int tries;
        std::chrono::milliseconds at;
        bool lasts;
    } steps[] = {{"a", 0, 0ms, true},      {"a", 1, 4999ms, true},  {"a", 2, 5000ms, false},
                 {"a", 0, 5001ms, false},  {"b", 0, 5002ms, true},  {"b", 3000, 5003ms, true},
                 {"a", 0, 5999ms, false},  {"a", 0, 6000ms, true},  {"a", 1, 10999ms, true},
                 {"a", 2, 11000ms, false}, {"b", 0, 11001ms, true}, {"a", 0, 11002ms, false},
                 {"b", 1, 16001ms, false}, {"a", 0, 16002ms, false}};
    for (const auto& [file, tries, at, expected] : steps)
        EXPECT_EQ(lasts(file, tries, at), expected) << file << ' ' << at.count();
    patience.pause(LockPatience::Clock::time_point(1h + 17s));
    EXPECT_FALSE(lasts("b", 0, 30min));
    patience.goOn(LockPatience::Clock::time_point(2h));
    EXPECT_FALSE(lasts("a", 0, 1h + 999ms));
    EXPECT_TRUE(lasts("b", 0, 1h + 1s));
}

TEST(LockPatience, DoesNotCountTheTimeOfABox) {
    using namespace std::chrono_literals;
    ScriptedOutside outside;
    LockPatience& patience = LockPatience::ofThread();
    for (const std::chrono::seconds ago : {0s, 1s}) {
        const auto lockedAt = LockPatience::Clock::now() - ago;
        const auto lastsAgain = [&] { return patience.lasts("a", 0, lockedAt + 1h); };
        EXPECT_TRUE(patience.lasts("a", 0, lockedAt - 5s));
        EXPECT_FALSE(patience.lasts("a", 1, lockedAt));
        std::optional<bool> inBox;
        outside.reading = [&] { inBox = lastsAgain(); };
        MsgBox(QString());
        EXPECT_EQ(inBox, ago == 1s);
        EXPECT_TRUE(lastsAgain());
    }
}
