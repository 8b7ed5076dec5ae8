#include <QProcess>
#include <QRandomGenerator>

#include "support/TemporaryProgram.h"

namespace {

class DurabilityTest : public TemporaryProgram {
 protected:
    std::unique_ptr<QProcess> lend(const QStringList& arguments) const {
        auto writer = std::make_unique<QProcess>();
        writer->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        writer->start(QStringLiteral(LOAN_WRITER), QStringList(catalogue()) + arguments, QProcess::ReadOnly);
        return writer;
    }
};

}  // namespace

TEST_F(DurabilityTest, ReportedLoansSurviveAKilledProgramAndNoneIsHalf) {
    for (int kill = 1; kill <= 5; ++kill) {
        const auto writer = lend({QString::number(kill), u"1"_s, u"1000000"_s});
        // At least some rows, then any moment while one is being written.
        QByteArray reported;
        const int rows = QRandomGenerator::global()->bounded(1, 30);
        while (reported.count('\n') < rows) {
            ASSERT_TRUE(writer->waitForReadyRead(60000)) << writer->errorString().toStdString();
            reported += writer->readAll();
        }
        writer->waitForReadyRead(QRandomGenerator::global()->bounded(3));
        writer->kill();
        ASSERT_TRUE(writer->waitForFinished());
        reported += writer->readAll();

        // Films are lent one by one from 1 on, so that a lost loan is a missing number.
        EXPECT_EQ(text("PRAGMA integrity_check"), u"ok"_s);
        const QByteArray stored =
            "SELECT iif(max(P_DVDID)=count(*) AND max(P_DVDID)=count(DISTINCT P_DVDID), count(*), 0)"
            " FROM tPujcky WHERE P_UID=" +
            QByteArray::number(kill);
        EXPECT_GE(number(stored.constData()), reported.count('\n'));
    }
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_UID IS NULL OR P_DVDID IS NULL OR "
                     "PDatPujcky IS NULL OR PDatVraceni IS NOT NULL"),
              0);
}

TEST_F(DurabilityTest, TwoProgramsLendAndReturnOnTheSameFilesWithoutLosingALoan) {
    const auto one = lend({u"1"_s, u"1"_s, u"250"_s, u"return"_s});
    const auto other = lend({u"2"_s, u"251"_s, u"250"_s, u"return"_s});
    for (QProcess* program : {one.get(), other.get()}) {
        ASSERT_TRUE(program->waitForFinished(240000));
        EXPECT_EQ(program->exitCode(), 0);
        EXPECT_EQ(program->readAll().count('\n'), 250);
    }
    EXPECT_EQ(text("SELECT count(*) || ' ' || count(DISTINCT P_DVDID) || ' ' || count(PDatVraceni) || ' ' || "
                   "sum(P_UID = 1 + (P_DVDID > 250)) FROM tPujcky"),
              u"500 500 500 500"_s);
    EXPECT_EQ(text("PRAGMA integrity_check"), u"ok"_s);
}
