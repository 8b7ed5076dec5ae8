#include "core/mDatabase.h"

#include "support/TemporaryProgram.h"

using SharedDatabaseTest = TemporaryProgram;

TEST_F(SharedDatabaseTest, AnOperationOpensReadsAndLeavesNothingOpen) {
    ActDBPath += QString(3, QChar::Null);
    OpenDB();
    EXPECT_EQ(ActDBPath, catalogue());
    EXPECT_EQ(ConnStr, u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + catalogue() +
                           u";Jet OLEDB:Database Password=QeLnBxVkTr"_s);
    EXPECT_EQ(OpenRS(u"SELECT * from tZanr "_s, false), 25);
    EXPECT_EQ(OpenRS(u"SELECT * from tZanr where ZID=0"_s, false), 0);
    EXPECT_EQ(OpenRS(u"SELECT * from tOddeleni"_s, false), 5);  // closes the previous one
    CloseRS();
    EXPECT_EQ(failureOf([] { CloseRS(); }), errors::objectClosed);
    CloseDB();
    EXPECT_EQ(ConnDB, nullptr);
    EXPECT_EQ(RsDB, nullptr);
    EXPECT_EQ(failureOf([] { CloseRS(); }), errors::objectNotSet);
    CloseDB();
}

TEST_F(SharedDatabaseTest, AFailedOpenIsThrownAndThrownAgainAtTheFirstUse) {
    QFile::remove(catalogue());
    EXPECT_EQ(failureOf([] { OpenDB(); }), errors::database);
    EXPECT_EQ(OpenRS(u"SELECT * from tDVD"_s, true), 0);
    EXPECT_EQ(failureOf([] { RsDB->Eof(); }), errors::database);
    CloseDB();
}

TEST_F(SharedDatabaseTest, OpeningShowsAFailureThatIsStillPending) {
    skipFailure([] { throw RuntimeError(errors::typeMismatch); });
    OpenDB();
    CloseDB();
    EXPECT_EQ(outside.told(), errors::description(errors::typeMismatch) + u"|0|"_s);
}
