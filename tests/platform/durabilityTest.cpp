#include <QProcess>
#include <QRandomGenerator>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class DurabilityTest : public TemporaryProgram {};

}  // namespace

// KALVERA_KILLS sets another number of kills, for a long run by hand.
TEST_F(DurabilityTest, EveryRowReportedAsWrittenOutlivesAKilledProgram) {
    bool given = false;
    const int wished = qEnvironmentVariableIntValue("KALVERA_KILLS", &given);
    const int kills = given ? wished : 5;
    qint64 reported = 0;
    for (int kill = 0; kill < kills; ++kill) {
        QProcess writer;
        writer.start(QStringLiteral(LOAN_WRITER), {catalogue()}, QProcess::ReadOnly);
        ASSERT_TRUE(writer.waitForStarted());
        // Some rows at least, and then a moment that falls anywhere within the writing of one.
        QList<qint64> keys;
        const int rows = QRandomGenerator::global()->bounded(1, 30);
        while (keys.size() < rows) {
            ASSERT_TRUE(writer.canReadLine() || writer.waitForReadyRead(60000))
                << writer.errorString().toStdString();
            while (writer.canReadLine())
                keys += writer.readLine().trimmed().toLongLong();
        }
        writer.waitForReadyRead(QRandomGenerator::global()->bounded(3));
        writer.kill();
        ASSERT_TRUE(writer.waitForFinished());
        for (QByteArray line = writer.readLine(); line.endsWith('\n'); line = writer.readLine()) {
            keys += line.trimmed().toLongLong();
        }

        ASSERT_EQ(text("PRAGMA integrity_check"), u"ok"_s);
        const sqlite::Database database(catalogue(), sqlite::Database::Mode::readWrite);
        const sqlite::Statement row(
            database, "SELECT P_UID=P_DVDID AND PDatPujcky IS NOT NULL FROM tPujcky WHERE P_ID=?1");
        for (const qint64 key : keys) {
            row.reset();
            row.bind(1, key);
            ASSERT_TRUE(row.step()) << "row " << key << " was reported and is gone";
            EXPECT_EQ(row.number(0), 1);
        }
        reported += keys.size();
    }
    EXPECT_GE(number("SELECT count(*) FROM tPujcky"), reported);
    RecordProperty("kills", kills);
}
