#include "datatool/DataFiles.h"
#include "platform/FolderLock.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class HostileFileTest : public TemporaryProgram {
 protected:
    /// Adds a genre through the program's own layer. @return what it fails with; "" for nothing.
    QString addGenre() {
        try {
            ado::Connection fresh;
            fresh.Open(connectionString(catalogue()));
            ado::Recordset genres;
            genres.Open(u"SELECT * from tZanr WHERE ZID=0"_s, fresh);
            genres.AddNew();
            genres.Fields(u"ZNAME").setValue(u"Nový"_s);
            genres.Update();
            return {};
        } catch (const RuntimeError& failure) {
            return failure.description();
        }
    }
};

}  // namespace

TEST_F(HostileFileTest, WhatAFileBringsAlongDoesNotRun) {
    sql("CREATE TRIGGER endless AFTER INSERT ON tZanr BEGIN DELETE FROM tZanr; END");
    const qint64 before = number("SELECT count(*) FROM tZanr");
    EXPECT_EQ(addGenre(), u""_s);
    EXPECT_EQ(number("SELECT count(*) FROM tZanr"), before + 1);

    sql("ALTER TABLE tZanr RENAME TO real; CREATE VIEW tZanr AS WITH RECURSIVE n(ZID) AS (SELECT 1 UNION ALL "
        "SELECT ZID+1 FROM n) SELECT ZID, 'x' AS ZNAME FROM n");
    ado::Recordset genres;
    EXPECT_NE(failureOf([&] { genres.Open(u"SELECT * from tZanr"_s, connection()); }), 0);
    sql("DROP VIEW tZanr; CREATE TABLE tZanr (ZID INTEGER PRIMARY KEY, ZNAME CHECK (0))");
    EXPECT_EQ(addGenre(), u""_s);
    sql("ALTER TABLE tZanr ADD COLUMN slow AS (zeroblob(900000000))");
    EXPECT_TRUE(addGenre().contains(u"není databází"_s));
}

TEST_F(HostileFileTest, KeysThatHaveRunOutAreCalledThat) {
    for (const char* last : {"2147483647", "9223372036854775807"}) {
        SCOPED_TRACE(last);
        const qint64 before = number("SELECT count(*) FROM tZanr");
        sql(("UPDATE sqlite_sequence SET seq=" + QByteArray(last) + " WHERE name='tZanr'").constData());
        EXPECT_TRUE(addGenre().contains(u"všechna čísla"_s));
        EXPECT_EQ(number("SELECT count(*) FROM tZanr"), before);
    }
}

TEST_F(HostileFileTest, ANewerFormatIsRefusedAndNamed) {
    const qint64 mark = number("PRAGMA application_id");
    for (const auto& [format, expected] :
         {std::pair(qint64{0}, u"není databází"_s), {1, u""_s}, {2, u"novější formát (2)"_s}}) {
        sql(("PRAGMA application_id=" + QByteArray::number(mark - 1 + format)).constData());
        EXPECT_TRUE(addGenre().contains(expected)) << format;
        EXPECT_EQ(addGenre().isEmpty(), format == 1) << format;
    }
}

TEST_F(HostileFileTest, TheDataToolSyncsEveryCommit) {
    EXPECT_EQ(dataFiles::openCatalogue(at(u"data"_s)).number("PRAGMA synchronous"), 3);
}

TEST(FolderLock, OneHolderAtATimeAndItsNameForTheOthers) {
    const QTemporaryDir folder;
    {
        const FolderLock first(folder.path());
        EXPECT_FALSE(first.isTaken());
        const FolderLock second(folder.path());
        EXPECT_TRUE(second.isTaken());
        EXPECT_TRUE(second.holder().contains(u" na počítači "_s));
    }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    // Left behind by a program that was killed.
    QFile left(folder.filePath(u"kalvera.lock"_s));
    ASSERT_TRUE(left.open(QFile::WriteOnly));
    left.close();
    EXPECT_FALSE(FolderLock(folder.path()).isTaken());
    EXPECT_FALSE(FolderLock(folder.filePath(u"none"_s)).isTaken());
}
