#include <QProcess>
#include <QRandomGenerator>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class DurabilityTest : public TemporaryProgram {
 protected:
    std::unique_ptr<QProcess> lend(int customer, int firstFilm, int films, const QStringList& more = {}) {
        auto writer = std::make_unique<QProcess>();
        writer->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        writer->start(QStringLiteral(LOAN_WRITER),
                      QStringList{catalogue(), QString::number(customer), QString::number(firstFilm),
                                  QString::number(films)} +
                          more,
                      QProcess::ReadOnly);
        return writer;
    }
};

}  // namespace

// KALVERA_KILLS sets another number of kills, for a long run by hand.
TEST_F(DurabilityTest, EveryLoanReportedAsWrittenOutlivesAKilledProgramAndNoneIsHalf) {
    bool given = false;
    const int wished = qEnvironmentVariableIntValue("KALVERA_KILLS", &given);
    const int kills = given ? wished : 5;
    for (int kill = 1; kill <= kills; ++kill) {
        const auto writer = lend(kill, 1, 1000000);
        ASSERT_TRUE(writer->waitForStarted());
        // Some rows at least, and then a moment that falls anywhere within the writing of one.
        QList<qint64> films;
        const int rows = QRandomGenerator::global()->bounded(1, 30);
        while (films.size() < rows) {
            ASSERT_TRUE(writer->canReadLine() || writer->waitForReadyRead(60000))
                << writer->errorString().toStdString();
            while (writer->canReadLine())
                films += writer->readLine().trimmed().toLongLong();
        }
        writer->waitForReadyRead(QRandomGenerator::global()->bounded(3));
        writer->kill();
        ASSERT_TRUE(writer->waitForFinished());
        for (QByteArray line = writer->readLine(); line.endsWith('\n'); line = writer->readLine())
            films += line.trimmed().toLongLong();

        ASSERT_EQ(text("PRAGMA integrity_check"), u"ok"_s);
        const sqlite::Database database(catalogue(), sqlite::Database::Mode::readWrite);
        const sqlite::Statement loans(database, "SELECT count(*) FROM tPujcky WHERE P_UID=?1 AND P_DVDID=?2");
        for (const qint64 film : films) {
            loans.reset();
            loans.bind(1, qint64{kill});
            loans.bind(2, film);
            loans.step();
            ASSERT_EQ(loans.number(0), 1) << "film " << film << " of run " << kill;
        }
        EXPECT_EQ(database.number("SELECT count(*) FROM tPujcky WHERE P_UID IS NULL OR P_DVDID IS NULL OR "
                                  "PDatPujcky IS NULL OR PDatVraceni IS NOT NULL"),
                  0);
    }
    RecordProperty("kills", kills);
}

TEST_F(DurabilityTest, TwoProgramsLendAndReturnOnTheSameFilesWithoutLosingALoan) {
    constexpr int films = 250;  // each lent and returned: 500 operations
    const auto one = lend(1, 1, films, {u"return"_s});
    const auto other = lend(2, films + 1, films, {u"return"_s});
    for (QProcess* program : {one.get(), other.get()}) {
        ASSERT_TRUE(program->waitForFinished(240000));
        EXPECT_EQ(program->exitCode(), 0);
        EXPECT_EQ(program->readAll().count('\n'), films);
    }
    EXPECT_EQ(text("SELECT count(*) || ' ' || count(DISTINCT P_DVDID) || ' ' || count(PDatVraceni) || ' ' || "
                   "sum(P_UID = 1 + (P_DVDID > 250)) FROM tPujcky"),
              u"500 500 500 500"_s);
    EXPECT_EQ(text("PRAGMA integrity_check"), u"ok"_s);
}
