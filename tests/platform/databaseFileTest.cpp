#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include "core/mDatabase.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

/// Root may write anywhere, so a test about permissions steps down for a while.
class SteppedDown final {
 public:
    SteppedDown() {
        if (user_ == 0 && seteuid(65534) != 0) ADD_FAILURE() << "cannot step down";
    }
    ~SteppedDown() {
        if (user_ == 0 && seteuid(0) != 0) ADD_FAILURE() << "cannot step up again";
    }
    SteppedDown(const SteppedDown&) = delete;
    SteppedDown& operator=(const SteppedDown&) = delete;

 private:
    uid_t user_ = geteuid();
};

class DatabaseFileTest : public TemporaryProgram {
 protected:
    void SetUp() override {
        // More than one page for each table.
        sql("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<2000)"
            "INSERT INTO tDVD (KatCisl, CZJm, Obsah) SELECT i, 'Film ' || i, 'Popis ' || i FROM n");
        whole_ = content(catalogue());
    }

    void put(const QByteArray& bytes) const { write(catalogue(), bytes); }
    QByteArray onDisk() const { return content(catalogue()); }

    /// Opens the catalogue and reads every value in it. @return the failure that ended this, or 0
    qint32 use() const {
        return failureOf([&] {
            ado::Connection opened;
            opened.Open(connectionString(catalogue()));
            ado::Recordset films;
            films.Open(u"SELECT * from tDVD Order by CZJM"_s, opened);
            for (; !films.Eof(); films.MoveNext()) {
                for (const QStringView name : {u"DVDID", u"KatCisl", u"CZJm", u"Obsah"})
                    films.Fields(name).Value();
            }
        });
    }

    QByteArray whole_;
};

}  // namespace

TEST_F(DatabaseFileTest, AFileThatIsNotOursIsRefusedAndLeftAsItIs) {
    QByteArray foreign = whole_;
    foreign[68] = '\x11';  // the mark
    for (const QByteArray& bytes : {QByteArray(), QByteArray("Standard Jet DB"), QByteArray(5000, 'x'),
                                    QByteArray("SQLite format 3\0", 16), foreign}) {
        SCOPED_TRACE(bytes.size());
        put(bytes);
        EXPECT_EQ(use(), errors::database);
        EXPECT_EQ(onDisk(), bytes);
    }
    QFile::remove(catalogue());
    EXPECT_EQ(use(), errors::database);
    EXPECT_FALSE(QFile::exists(catalogue()));
}

TEST_F(DatabaseFileTest, AWrongPasswordIsRefused) {
    ado::Connection opened;
    const QString right = connectionString(catalogue());
    EXPECT_EQ(failureOf([&] { opened.Open(right + u'x'); }), errors::databasePassword);
    EXPECT_EQ(failureOf([&] { opened.Open(right.chopped(10)); }), errors::databasePassword);
    EXPECT_EQ(failureOf([&] { opened.Open(right.chopped(10) + u"qelnbxvktr"_s); }), errors::databasePassword);
    EXPECT_EQ(failureOf([&] { opened.Open(catalogue()); }), errors::invalidCall);
    EXPECT_FALSE(opened.isOpen());
    opened.Open(right);
    EXPECT_TRUE(opened.isOpen());
}

TEST_F(DatabaseFileTest, AFolderMayBeCalledAnything) {
    const QString folder = this->folder() + u"/a;Jet OLEDB:Database Password=b; Data Source=c"_s;
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(QFile::copy(catalogue(), folder + u"/data.ddb"_s));
    ado::Connection opened;
    opened.Open(connectionString(folder + u"/data.ddb"_s));
    EXPECT_TRUE(opened.isOpen());
}

TEST_F(DatabaseFileTest, ADamagedFileEndsInAFailureAndIsNeverChanged) {
    const qsizetype page = 4096;
    ASSERT_GT(whole_.size(), 10 * page);
    // Every byte of the header turned round, and turned by its lowest bits.
    for (int at = 0; at < 100; ++at) {
        for (const int turn : {0xFF, 0x03}) {
            QByteArray damaged = whole_;
            damaged[at] = static_cast<char>(damaged[at] ^ turn);
            put(damaged);
            use();
            ASSERT_EQ(onDisk(), damaged) << "byte " << at;
        }
    }
    for (const qsizetype length : {page / 2, page, page * 5, whole_.size() / 2, whole_.size() - page}) {
        put(whole_.first(length));
        EXPECT_NE(use(), 0) << "cut to " << length;
        EXPECT_EQ(onDisk(), whole_.first(length));
    }
    int noticed = 0;
    for (qsizetype at = 0; at < whole_.size(); at += page) {
        QByteArray damaged = whole_;
        damaged.replace(at, page, QByteArray(page, '\0'));
        put(damaged);
        if (use() != 0) ++noticed;
        ASSERT_EQ(onDisk(), damaged) << "page " << at / page;
    }
    // Pages of tables that are not read here may pass; those of the films, their order and the schema may
    // not.
    EXPECT_GT(noticed, whole_.size() / page / 2);
}

TEST_F(DatabaseFileTest, AfterADamagedPageTheWalkStandsStillAndFailsAgain) {
    QByteArray damaged = whole_;
    // The last leaf of the films, found by a text that stands in it.
    const qsizetype page = damaged.lastIndexOf("Popis 1500") / 4096 * 4096;
    ASSERT_GT(page, 4096);
    damaged.replace(page, 4096, QByteArray(4096, '\0'));
    put(damaged);
    ado::Recordset films;
    films.Open(u"SELECT * from tDVD"_s, connection());
    int met = 0;
    while (failureOf([&] { films.MoveNext(); }) == 0)
        ++met;
    EXPECT_GT(met, 100);
    EXPECT_LT(met, 1600);
    const DbValue key = films.Fields(u"DVDID").Value();
    EXPECT_EQ(key, DbValue(met + 1));
    EXPECT_EQ(failureOf([&] { films.MoveNext(); }), errors::database);
    EXPECT_EQ(failureOf([&] { films.RecordCount(); }), errors::database);
    EXPECT_EQ(films.Fields(u"DVDID").Value(), key);
}

TEST_F(DatabaseFileTest, LookingAtAFileThatIsInUseLeavesItsLocksAlone) {
    ado::Recordset films;
    films.Open(u"SELECT * from tDVD"_s, connection());
    ado::Connection second;
    second.Open(connectionString(catalogue()));
    second.Close();
    QProcess other;  // another process, as locks of this one do not hold against itself
    other.start(u"sqlite3"_s, {catalogue(), u"BEGIN EXCLUSIVE;"_s});
    ASSERT_TRUE(other.waitForFinished());
    EXPECT_TRUE(other.readAllStandardError().contains("locked"));
}

TEST_F(DatabaseFileTest, AFileHeldByAnotherProgramEndsInAFailureAfterAWhile) {
    const sqlite::Database other(catalogue(), sqlite::Database::Mode::readWrite);
    other.exec("BEGIN EXCLUSIVE");
    QElapsedTimer waiting;
    waiting.start();
    EXPECT_EQ(use(), errors::database);
    EXPECT_GE(waiting.elapsed(), 4000);
    other.exec("ROLLBACK");
    EXPECT_EQ(use(), 0);
    EXPECT_EQ(onDisk(), whole_);
}

TEST_F(DatabaseFileTest, AFolderThatCannotBeWrittenIsReadAndRefusesChanges) {
    const QString data = folder() + u"/data"_s;
    ASSERT_TRUE(QFile::setPermissions(folder(), QFile::Permissions(0x7755)));
    ASSERT_TRUE(QFile::setPermissions(catalogue(), QFile::Permissions(0x6644)));
    ASSERT_TRUE(QFile::setPermissions(data, QFile::Permissions(0x5555)));
    qint32 use = 0;
    qint32 change = 0;
    {
        const SteppedDown asNobody;
        use = this->use();
        change = failureOf([this] {
            ado::Recordset films;
            films.Open(u"SELECT * from tDVD WHERE DVDID=1"_s, connection());
            films.Fields(u"CZJm").setValue(u"Jinak"_s);
            films.Update();
        });
    }
    ASSERT_TRUE(QFile::setPermissions(data, QFile::Permissions(0x7755)));
    EXPECT_EQ(use, 0);
    EXPECT_EQ(change, errors::databaseReadOnly);
    EXPECT_EQ(onDisk(), whole_);
}

TEST_F(DatabaseFileTest, BetweenTwoOperationsTheFileIsClosedAndComplete) {
    connection();
    connection().Close();
    const QString moved = catalogue() + u".copy"_s;
    ASSERT_TRUE(QFile::copy(catalogue(), moved));
    EXPECT_EQ(onDisk(), whole_);
    EXPECT_FALSE(QFile::exists(catalogue() + u"-journal"_s));
    EXPECT_FALSE(QFile::exists(catalogue() + u"-wal"_s));
    const QFileInfoList descriptors = QDir(u"/proc/self/fd"_s).entryInfoList(QDir::Files | QDir::System);
    for (const QFileInfo& descriptor : descriptors) {
        EXPECT_FALSE(descriptor.symLinkTarget().contains(u".ddb"_s))
            << descriptor.symLinkTarget().toStdString();
    }
}
