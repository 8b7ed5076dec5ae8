#include "services/novaVerze.h"

#include "core/mVerze.h"
#include "support/TemporaryProgram.h"

using NovaVerzeTest = TemporaryProgram;

TEST(IsNewer, ComparesNumbersUpToTheOneThatDecides) {
    const std::pair<QString, bool> cases[] = {
        {u"1-0-23"_s, false}, {u"1-0-24"_s, true},         {u"1-1-0"_s, true}, {u"2-0-0"_s, true},
        {u"0-9-99"_s, false}, {u"0-1-24"_s, false},        {u"2-x"_s, true},   {u"2"_s, true},
        {u"1-1"_s, true},     {u"1-0-99999999999"_s, true}};
    for (const auto& [offered, newer] : cases)
        EXPECT_EQ(isNewer(offered, {1, 0, 23}), newer) << offered.toStdString();
    const std::pair<QString, qint32> failures[] = {
        {u"1-0"_s, 9}, {u"1"_s, 9}, {u""_s, 9}, {u"<html>"_s, 13}, {u"1-x-1"_s, 13}};
    for (const auto& [offered, failure] : failures)
        EXPECT_EQ(failureOf([&offered = offered] {
                      isNewer(offered, {1, 0, 23});
                  }),
                  failure)
            << offered.toStdString();
}

TEST_F(NovaVerzeTest, TheFirstFieldOfTheAnswerIsComparedWithThisVersion) {
    const QByteArray own = verze::text().replace(u'.', u'-').toLatin1();
    const struct {
        QByteArray answer;
        bool newer;
        qint32 failure = 0;
    } cases[] = {{own, false},
                 {own + '0', true},
                 {"9999-0-0,poznámka", true},
                 {"\"9999-0-0\",x", true},
                 {"\"9999-0-0", true},
                 {own + "\r\n9999-0-0", false},
                 {"", false, 62},
                 {",", false, 9},
                 {"\r\n9999-0-0", false, 9},
                 {"\"\"", false, 9},
                 {"  9999-0-0 \r\n", true}};
    const Sites sites{.update = u"http://update"_s};
    for (const auto& [answer, newer, failure] : cases) {
        outside.pages[u"http://update/podpora/files/dvdkalver.asp"_s] = answer;
        bool offered = false;
        EXPECT_EQ(failureOf([&] { offered = JeNovaVerze(sites); }), failure) << answer.toStdString();
        EXPECT_EQ(offered, newer) << answer.toStdString();
        EXPECT_EQ(content(u"data/dvdver.inf"_s), answer);
    }
    outside.pages.clear();
    EXPECT_FALSE(JeNovaVerze(sites));
}
