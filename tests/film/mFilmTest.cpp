#include "film/mFilm.h"

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

using FilmRules = TemporaryProgram;

TEST_F(FilmRules, BoxesBecomeOneTokenEach) {
    EXPECT_EQ(film::ZapisChk({}), u""_s);
    EXPECT_EQ(film::ZapisChk({1}), u"A"_s);
    EXPECT_EQ(film::ZapisChk({1, 0, 1, 1, 1, 0, 0, 0, 0}), u"A|N|A|A|A|N|N|N|N"_s);
    EXPECT_EQ(film::ZapisChk({2, -1, 1}), u"N|N|A"_s);
}

TEST_F(FilmRules, TokensSetTheBoxesThatTheyStandFor) {
    const std::pair<QString, std::vector<int>> cases[] = {
        {u"A|N|A"_s, {1, 0, 1}},  {u""_s, {0, 1, 2}},    {u"A"_s, {1, 1, 2}},   {u"A|A|A|A|A"_s, {1, 1, 1}},
        {u"a|A |X"_s, {0, 0, 0}}, {u"||A"_s, {0, 0, 1}}, {u"A|N|"_s, {1, 0, 0}}};
    for (const auto& [tokens, expected] : cases) {
        std::vector<int> boxes = {0, 1, 2};
        film::NactiChk(boxes, tokens);
        EXPECT_EQ(boxes, expected) << tokens.toStdString();
    }
}

TEST_F(FilmRules, TheHighestSelectedOptionIsTheLanguage) {
    EXPECT_EQ(film::VratJazyk({false, false, false}), 0);
    EXPECT_EQ(film::VratJazyk({true, false, false}), 0);
    EXPECT_EQ(film::VratJazyk({true, true, false}), 1);
    EXPECT_EQ(film::VratJazyk({false, false, true}), 2);
    EXPECT_EQ(film::NastavJazyk(2, 3), 2);
    for (const qint32 strange : {-1, 3, 99})
        EXPECT_EQ(failureOf([strange] { film::NastavJazyk(strange, 3); }), errors::noSuchControl);
}

TEST_F(FilmRules, LengthsAreCleanedToDigits) {
    const std::pair<QString, QString> cases[] = {
        {u"118 min."_s, u"118"_s}, {u"95 min"_s, u"95"_s},    {u"2h 5m"_s, u"0"_s},
        {u"120"_s, u"120"_s},      {u"abc"_s, u"abc"_s},      {u""_s, u""_s},
        {u"min."_s, u"0"_s},       {u"1.118"_s, u"1118"_s},   {u"90 MIN"_s, u"0"_s},
        {u"1 0 0 0"_s, u"1000"_s}, {u"mmininin 7"_s, u"0"_s}, {u"90,5 min"_s, u"90,5"_s}};
    for (const auto& [typed, stored] : cases)
        EXPECT_EQ(film::cleanLength(typed), stored) << typed.toStdString();
}

TEST_F(FilmRules, DirectorsGenresAndCountriesFitTheirPlaces) {
    const QString thirtyFive(35, u'x');
    EXPECT_EQ(film::storedDirector(thirtyFive), thirtyFive);
    EXPECT_EQ(film::storedDirector(thirtyFive + u'y'), thirtyFive);

    const std::pair<QStringList, QString> genres[] = {{{}, u""_s},
                                                      {{u"Z"_s}, u", Z"_s},
                                                      {{u""_s}, u", "_s},
                                                      {{u"Aa"_s}, u"Aa"_s},
                                                      {{u"Drama"_s, u"Krimi"_s}, u"Drama, Krimi"_s},
                                                      {{u"Z"_s, u"Y"_s}, u"Z, Y"_s}};
    for (const auto& [chosen, text] : genres)
        EXPECT_EQ(film::genreText(chosen), text);

    const QString twentyFour(24, u'x');
    const std::pair<QString, QString> countries[] = {
        {twentyFour, twentyFour},
        {twentyFour + u'y', QString(23, u'x')},
        {u"USA / Spojené království / Německo"_s, u"USA / Eng / Německo"_s},
        {u"Spojené království"_s, u"Spojené království"_s},
        {u"Spojené království / Spojené království"_s, u"Eng / Eng"_s},
        {u"Spojené království, "_s + twentyFour, u"Eng, xxxxxxxxxxxxxxxxxx"_s}};
    for (const auto& [found, taken] : countries)
        EXPECT_EQ(film::shortCountry(found), taken) << found.toStdString();
}
