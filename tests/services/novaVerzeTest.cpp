#include "services/novaVerze.h"

#include <QFile>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class NovaVerzeTest : public TemporaryProgram {
 protected:
    const Sites sites{.update = u"http://update"_s};
    const QString address = u"http://update/podpora/files/dvdkalver.asp"_s;
};

}  // namespace

TEST_F(NovaVerzeTest, VersionsAreComparedByTheNumbersThatDecide) {
    const struct {
        QByteArray answer;
        bool newer;
    } cases[] = {{"1-0-23", false},
                 {"1-0-24", true},
                 {"1-1-0", true},
                 {"2-0-0", true},
                 {"0-9-99", false},
                 {"0-1-24", false},
                 {"2-x", true},
                 {"2", true},
                 {"1-1", true},
                 {"1-0-24,poznámka", true},
                 {"\"1-0-24\",x", true},
                 {"1-0-23\r\n9-9-9", false},
                 {"1-0-99999999999", true},
                 {"\"1-0-24", true},
                 {"  1-0-24 \r\n", true}};
    for (const auto& [answer, newer] : cases) {
        outside.pages[address] = answer;
        EXPECT_EQ(JeNovaVerze(sites), newer) << answer.toStdString();
    }
    QFile kept(folder() + u"/data/dvdver.inf"_s);
    ASSERT_TRUE(kept.open(QFile::ReadOnly));
    EXPECT_EQ(kept.readAll(), "  1-0-24 \r\n");
}

TEST_F(NovaVerzeTest, AnAnswerThatIsNoVersionIsAFailureAndNoAnswerIsNoVersion) {
    const struct {
        QByteArray answer;
        qint32 failure;
    } cases[] = {{"1-0", 9}, {"1", 9}, {"<html>", 13},    {"1-x-1", 13},
                 {"", 62},   {",", 9}, {"\r\n1-0-24", 9}, {"\"\"", 9}};
    for (const auto& [answer, failure] : cases) {
        outside.pages[address] = answer;
        EXPECT_EQ(failureOf([&] { JeNovaVerze(sites); }), failure) << answer.toStdString();
    }
    outside.pages.clear();
    EXPECT_FALSE(JeNovaVerze(sites));
}
