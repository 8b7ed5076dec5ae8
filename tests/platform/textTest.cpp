#include "platform/text.h"

#include <limits>

#include "platform/codepage.h"
#include "platform/collation.h"
#include "support/TemporaryProgram.h"
#include "support/conversions.h"

using Text = TemporaryProgram;

TEST_F(Text, TrimmingCutsBlanksOnlyAndChangingCaseKeepsPositions) {
    expectEach(&text::trim,
               {u"  Kolja 2  →Kolja 2", u" \t\u00A0Kolja\u00A0\n →\t\u00A0Kolja\u00A0\n", u"   →"});
    // Letters whose other case takes more than one character stay.
    expectEach(&text::upperCase, {u"příliš žluťoučký kůň→PŘÍLIŠ ŽLUŤOUČKÝ KŮŇ", u"straße č→STRAßE Č",
                                  u"\uFB01lm ß \U00010428→\uFB01LM ß \U00010400"});
    expectEach(&text::lowerCase,
               {u"PŘÍLIŠ ŽLUŤOUČKÝ KŮŇ→příliš žluťoučký kůň", u"\u0130STANBUL→\u0130stanbul"});
}

TEST_F(Text, SearchingCountsFromOne) {
    // Text, needle and start; the place found, and the one found whatever the case.
    const std::tuple<QStringView, QStringView, qsizetype, qsizetype, qsizetype> cases[] = {
        {u"abcabc", u"a", 1, 1, 1},   {u"abcabc", u"a", 2, 4, 4},     {u"abcabc", u"c", 6, 6, 6},
        {u"abcabc", u"c", 7, 0, 0},   {u"abcabc", u"x", 1, 0, 0},     {u"abcabc", u"CA", 1, 0, 3},
        {u"abcabc", u"", 3, 3, 3},    {u"abcabc", u"", 7, 0, 0},      {u"", u"a", 1, 0, 0},
        {u"", u"", 1, 0, 0},          {u"Máj á", u"Á", 1, 0, 2},      {u"Máj á", u"Á", 3, 0, 5},
        {u"málo", u"a", 1, 0, 0},     {u"ŽIŽKA", u"žk", 1, 0, 3},     {u"STRASSE", u"ß", 1, 0, 0},
        {u"Straße B", u"b", 1, 0, 8}, {u"Straße B", u"SSE", 1, 0, 0}, {u"\uFB01lm", u"L", 1, 0, 2}};
    for (const auto& [text, needle, start, exact, anyCase] : cases) {
        EXPECT_EQ(text::inStr(text, needle, start), exact) << text.toString().toStdString();
        EXPECT_EQ(text::inStrIgnoringCase(text, needle, start), anyCase) << text.toString().toStdString();
    }
    EXPECT_EQ(failureOf([] { text::inStr(u"abc", u"a", 0); }), 5);
    EXPECT_EQ(failureOf([] { text::inStrIgnoringCase(u"abc", u"a", -1); }), 5);
}

TEST_F(Text, PartsAreCutWithinTheText) {
    EXPECT_EQ(text::mid(u"Kolja", 2, 3), u"olj"_s);
    EXPECT_EQ(text::mid(u"Kolja", 2, std::numeric_limits<qsizetype>::max()), u"olja"_s);
    EXPECT_EQ(text::mid(u"Kolja", 6), QString());
    EXPECT_EQ(failureOf([] { text::mid(u"Kolja", 0); }), 5);
    EXPECT_EQ(failureOf([] { text::mid(u"Kolja", 1, -1); }), 5);
    EXPECT_EQ(text::split(u"a;;b;"_s, u';'), QStringList({u"a"_s, u""_s, u"b"_s, u""_s}));
    EXPECT_TRUE(text::split(u""_s, u';').isEmpty());
    const QString film = u"a😀b"_s;
    for (const auto& [length, first] :
         {std::pair(0, u""_s), {1, u"a"_s}, {2, u"a"_s}, {3, u"a😀"_s}, {9, film}})
        EXPECT_EQ(text::cut(film, length), first);
    // Both halves in the wrong order, too.
    for (const QString& halves : {film, film.left(2) + film.mid(3), film.left(1) + film.mid(2),
                                  film[2] + film.mid(0, 1) + film.mid(3) + film[1]})
        EXPECT_EQ(text::wholeLetters(halves), halves == film ? film : u"ab"_s);
}

TEST_F(Text, LeadingNumberIsReadUpToTheFirstOtherCharacter) {
    for (const QString& text :
         u"→0|abc→0|12a→12| 1 2→12|-5→-5|\t-5\r\n6→-56|+7→7|+→0|-→0|.→0|5.→5|-.5→-0.5|1,5→1|1-2→1|1.5.6→1.5|"
         "--5→0|e3→0|1e3→1000|1d2→100|1e→1|1e+→1|2e1.5→20|٣→0|1E-2→0.01|98 m→98|1e2e3→100|1\u00A02→1|"
         "-1e400 min→-inf"_s.split(u'|'))
        expectEach([](const QString& number) { return QString::number(text::Val(number)); }, {text});
    EXPECT_EQ(text::Val(QString(400, u'9')), std::numeric_limits<double>::infinity());
}

TEST_F(Text, WholeNumbersFollowTheDecimalSignOfTheUser) {
    for (const QString& user : {u"cs_CZ"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(user));
        const bool czech = user == u"cs_CZ"_s;
        const auto toLong = [czech](QString number) {
            number.replace(u'#', czech ? u',' : u'.').replace(u'@', czech ? u'.' : u',');
            qint32 value = 0;
            const qint32 failure = failureOf([&] { value = text::toLong(number); });
            EXPECT_EQ(text::isNumeric(number), failure != errors::typeMismatch) << number.toStdString();
            return failure == errors::typeMismatch ? u"none"_s
                   : failure == errors::overflow   ? u"too large"_s
                                                   : QString::number(value);
        };
        // The sign # stands for the decimal sign of the user, and @ for the other one.
        for (const QString& number :
             u"2#5→2|3#5→4|-2#5→-2|-3#5→-4|#49999999999999994→0|2#51→3|#5→0|5#→5| +42 "
             u"→42|2147483647#4→2147483647|"
             "-2147483648→-2147483648|2147483648→too large|2147483647#5→too large|-2147483649→too large|"
             "99999999999999999999→too large|→none|  →none|+→none|#→none|12a→none|1 2→none|- 1→none|"
             "1-→none|1#2#3→none|1@5→none|1e3→none|٣→none|1 or 1=1→none"_s.split(u'|'))
            expectEach(toLong, {number});
        EXPECT_EQ(failureOf([] { text::toLong(QString(400, u'9')); }), errors::overflow);
    }
}

TEST(Codepage, LettersAndUnusedBytesConvertBothWays) {
    const QString letters = u"šžŠŽřěťŤčČďĎňŇůŮáíýéúÁÍÝÉÚóÓŘĚľĽ€„“–…ßAz09\u0081\u0083\u0088\u0090\u0098"_s;
    const QByteArray bytes(
        "\x9A\x9E\x8A\x8E\xF8\xEC\x9D\x8D\xE8\xC8\xEF\xCF\xF2\xD2\xF9\xD9\xE1\xED\xFD\xE9\xFA\xC1\xCD\xDD\xC9"
        "\xDA\xF3\xD3\xD8\xCC\xBE\xBC\x80\x84\x93\x96\x85\xDF"
        "Az09\x81\x83\x88\x90\x98");
    EXPECT_EQ(codepage::toWindows1250(letters), bytes);
    EXPECT_EQ(codepage::fromWindows1250(bytes), letters);
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(codepage::toWindows1250(codepage::fromWindows1250(all)), all);
}

TEST(Codepage, EachForeignCharacterBecomesOneQuestionMark) {
    expectEach([](const QString& text) { return QString::fromLatin1(codepage::toWindows1250(text)); },
               {u"жук→???", u"ñ\u0080ÿ→???", u"a\U0001F3ACb→a?b", u"\U0001F3AC\U0001F3AC→??", u"\xD83Cx→?x",
                u"x\xDFAC→x?"});
}

TEST(Collation, OrderIsTheCzechAlphabetWhateverTheCase) {
    const QStringList ordered =
        u"|10|9|Ab|áb|abc|ac|Cyril|czz|Čapek|čáry|ďábel|Dům|had|HŽ|Chata|chůze|Iva|Ryba|rzz|Řeka|Sůl|szz|"
        "Šach|tuna|Týn|Zuzana|zzz|Žába"_s.split(u'|');
    for (qsizetype at = 1; at < ordered.size(); ++at) {
        EXPECT_LT(collation::compare(ordered[at - 1], ordered[at]), 0) << ordered[at].toStdString();
        EXPECT_GT(collation::compare(ordered[at], ordered[at - 1]), 0) << ordered[at].toStdString();
    }
    EXPECT_EQ(collation::compare(u"příliš žluťoučký CHRT", u"PŘÍLIŠ ŽLUŤOUČKÝ chrt"), 0);
}
