#include "film/mFilm.h"

#include "support/TemporaryProgram.h"
#include "support/conversions.h"

using FilmRules = TemporaryProgram;

TEST_F(FilmRules, BoxesAreStoredAsTokens) {
    EXPECT_EQ(film::ZapisChk({}), u""_s);
    EXPECT_EQ(film::ZapisChk({2, -1, 1, 0}), u"N|N|A|N"_s);
    const auto boxes = [](const QString& tokens) {
        std::vector<int> values = {0, 1, 2};
        film::NactiChk(values, tokens);
        return u"%1%2%3"_s.arg(values[0]).arg(values[1]).arg(values[2]);
    };
    expectEach(boxes, {u"A|N|A→101", u"→012", u"A→112", u"A|A|A|A|A→111", u"a|A |X→000", u"||A→001"});
}

TEST_F(FilmRules, TheHighestSelectedOptionIsTheLanguage) {
    EXPECT_EQ(film::VratJazyk({false, false, false}), 0);
    EXPECT_EQ(film::VratJazyk({true, true, false}), 1);
    EXPECT_EQ(film::VratJazyk({false, false, true}), 2);
    EXPECT_EQ(film::NastavJazyk(2, 3), 2);
    for (const qint32 strange : {-1, 3, 99})
        EXPECT_EQ(failureOf([strange] { film::NastavJazyk(strange, 3); }), errors::noSuchControl);
}

TEST_F(FilmRules, TextsFitTheirColumns) {
    expectEach(&film::cleanLength,
               {u"118 min.→118", u"95 min→95", u"2h 5m→0", u"120→120", u"abc→abc", u"→", u"min.→0",
                u"1.118→1118", u"90 MIN→0", u"1 0 0 0→1000", u"mmininin 7→0", u"90,5 min→90,5"});
    const QString thirtyFive(35, u'x');
    EXPECT_EQ(film::storedDirector(thirtyFive), thirtyFive);
    EXPECT_EQ(film::storedDirector(thirtyFive + u'y'), thirtyFive);

    const auto genres = [](const QString& chosen) { return film::genreText(chosen.split(u'+')); };
    expectEach(genres, {u"Z→, Z", u"→, ", u"Aa→Aa", u"Drama+Krimi→Drama, Krimi", u"Z+Y→Z, Y"});
    EXPECT_EQ(film::genreText({}), u""_s);

    const QString twentyFour(24, u'x');
    EXPECT_EQ(film::shortCountry(twentyFour), twentyFour);
    EXPECT_EQ(film::shortCountry(twentyFour + u'y'), twentyFour.chopped(1));
    expectEach(
        &film::shortCountry,
        {u"USA / Spojené království / Německo→USA / Eng / Německo", u"Spojené království→Spojené království",
         u"Spojené království / Spojené království→Eng / Eng",
         u"Spojené království, xxxxxxxxxxxxxxxxxxxxxxxx→Eng, xxxxxxxxxxxxxxxxxx"});
}
