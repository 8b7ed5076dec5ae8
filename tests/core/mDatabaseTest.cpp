#include "core/mDatabase.h"

#include <QFile>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

using SharedDatabaseTest = TemporaryProgram;

TEST_F(SharedDatabaseTest, AnOperationOpensWorksAndLeavesNothingBehind) {
    OpenDB();
    EXPECT_EQ(ConnStr, u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + catalogue() +
                           u";Jet OLEDB:Database Password=QeLnBxVkTr"_s);
    EXPECT_EQ(OpenRS(u"SELECT * from tZanr "_s, false), 25);
    EXPECT_EQ(OpenRS(u"SELECT * from tZanr where ZID=0"_s, false), 0);
    EXPECT_EQ(OpenRS(u"SELECT * from tOddeleni"_s, false), 5);  // the one before is closed by this one
    CloseRS();
    EXPECT_EQ(failureOf([] { CloseRS(); }), errors::objectClosed);
    CloseDB();
    EXPECT_EQ(ConnDB, nullptr);
    EXPECT_EQ(RsDB, nullptr);
    EXPECT_EQ(failureOf([] { CloseRS(); }), errors::objectNotSet);
    CloseDB();  // nothing to close is no failure
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(SharedDatabaseTest, ANewRecordStartsOnAnEmptyResult) {
    OpenDB();
    EXPECT_EQ(OpenRS(u"SELECT * from tZanr where ZID=0"_s, true), 0);
    RsDB->Fields(u"ZNAME").setValue(u"Nový žánr"_s);
    RsDB->Update();
    CloseRS();
    CloseDB();
    EXPECT_EQ(text("SELECT ZNAME || ZCOLOR FROM tZanr WHERE ZID=26"), u"Nový žánr0"_s);
}

TEST_F(SharedDatabaseTest, NulCharactersBehindThePathAreTakenAway) {
    ActDBPath += QString(3, QChar::Null);
    OpenDB();
    EXPECT_EQ(ActDBPath, catalogue());
    CloseDB();
}

TEST_F(SharedDatabaseTest, AFailedOpenGoesToTheCallerAndShowsAtTheFirstUse) {
    QFile::remove(catalogue());
    EXPECT_EQ(failureOf([] { OpenDB(); }), errors::database);
    EXPECT_EQ(OpenRS(u"SELECT * from tDVD"_s, true), 0);
    EXPECT_EQ(failureOf([] { RsDB->Eof(); }), errors::database);  // and tells the reason, not "closed"
    CloseDB();
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(SharedDatabaseTest, AFailureStillPendingBehindTheOpeningIsShown) {
    skipFailure([] { throw RuntimeError(errors::typeMismatch); });
    OpenDB();
    CloseDB();
    EXPECT_EQ(outside.told(), errors::description(errors::typeMismatch) + u"|0|"_s);
}
