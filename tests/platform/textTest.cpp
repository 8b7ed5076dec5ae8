#include "platform/text.h"

#include <limits>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

using Text = TemporaryProgram;

constexpr double infinite = std::numeric_limits<double>::infinity();

}  // namespace

TEST_F(Text, TrimmingCutsBlanksOnly) {
    EXPECT_EQ(text::trim(u"  Kolja 2  "), u"Kolja 2"_s);
    EXPECT_EQ(text::trim(u" \t\u00A0Kolja\u00A0\n "), u"\t\u00A0Kolja\u00A0\n"_s);
    EXPECT_EQ(text::trim(u"   "), QString());
}

TEST_F(Text, ChangingCaseKeepsPositions) {
    EXPECT_EQ(text::upperCase(u"příliš žluťoučký kůň"), u"PŘÍLIŠ ŽLUŤOUČKÝ KŮŇ"_s);
    EXPECT_EQ(text::lowerCase(u"PŘÍLIŠ ŽLUŤOUČKÝ KŮŇ"), u"příliš žluťoučký kůň"_s);
    // Letters whose other case takes more than one character, among letters of every plane.
    EXPECT_EQ(text::upperCase(u"straße č"), u"STRAßE Č"_s);
    EXPECT_EQ(text::upperCase(u"\uFB01lm ß \U00010428"), u"\uFB01LM ß \U00010400"_s);
    EXPECT_EQ(text::lowerCase(u"\u0130STANBUL"), u"\u0130stanbul"_s);
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
        SCOPED_TRACE(u"%1 in %2 from %3"_s.arg(needle, text).arg(start).toStdString());
        EXPECT_EQ(text::inStr(text, needle, start), exact);
        EXPECT_EQ(text::inStrIgnoringCase(text, needle, start), anyCase);
    }
    EXPECT_EQ(failureOf([] { text::inStr(u"abc", u"a", 0); }), 5);
    EXPECT_EQ(failureOf([] { text::inStrIgnoringCase(u"abc", u"a", -1); }), 5);
}

TEST_F(Text, CuttingStopsAtTheEndOfTheText) {
    EXPECT_EQ(text::mid(u"Kolja", 2, 3), u"olj"_s);
    EXPECT_EQ(text::mid(u"Kolja", 2, std::numeric_limits<qsizetype>::max()), u"olja"_s);
    EXPECT_EQ(text::mid(u"Kolja", 5, 1), u"a"_s);
    EXPECT_EQ(text::mid(u"Kolja", 6), QString());
    EXPECT_EQ(failureOf([] { text::mid(u"Kolja", 0); }), 5);
    EXPECT_EQ(failureOf([] { text::mid(u"Kolja", 1, -1); }), 5);
}

TEST_F(Text, SplittingKeepsEmptyPartsButAnEmptyTextHasNone) {
    EXPECT_EQ(text::split(u"a;;b;"_s, u';'), QStringList({u"a"_s, u""_s, u"b"_s, u""_s}));
    EXPECT_EQ(text::split(u";"_s, u';'), QStringList({u""_s, u""_s}));
    EXPECT_TRUE(text::split(u""_s, u';').isEmpty());
}

TEST_F(Text, LeadingNumberIsReadUpToTheFirstStranger) {
    const std::pair<QStringView, double> cases[] = {
        {u"", 0},      {u"abc", 0},     {u"12a", 12},    {u" 1 2", 12},  {u"-5", -5}, {u"\t-5\r\n6", -56},
        {u"+7", 7},    {u"+", 0},       {u"-", 0},       {u".", 0},      {u"5.", 5},  {u"-.5", -0.5},
        {u"1,5", 1},   {u"1-2", 1},     {u"1.5.6", 1.5}, {u"--5", 0},    {u"e3", 0},  {u"1e3", 1000},
        {u"1d2", 100}, {u"1e", 1},      {u"1e+", 1},     {u"2e1.5", 20}, {u"٣", 0},   {u"1E-2", 0.01},
        {u"98 m", 98}, {u"1e2e3", 100}, {u"1\u00A02", 1}};
    for (const auto& [number, value] : cases)
        EXPECT_EQ(text::Val(number), value) << number.toString().toStdString();
    EXPECT_EQ(text::Val(u"-1e400 min"), -infinite);
    EXPECT_EQ(text::Val(QString(400, u'9')), infinite);
}

TEST_F(Text, WholeNumbersFollowTheDecimalSignOfTheUser) {
    for (const QString& user : {u"cs_CZ"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(user));
        const bool czech = user == u"cs_CZ"_s;
        // The sign # stands for the decimal sign of the user, and @ for the other one.
        const auto written = [czech](QStringView number) {
            return number.toString().replace(u'#', czech ? u',' : u'.').replace(u'@', czech ? u'.' : u',');
        };
        const std::pair<QStringView, qint32> whole[] = {{u"2#5", 2},   {u"3#5", 4},   {u"-2#5", -2},
                                                        {u"-3#5", -4}, {u"2#51", 3},  {u"#5", 0},
                                                        {u"5#", 5},    {u" +42 ", 42}};
        for (const auto& [number, value] : whole) {
            SCOPED_TRACE(written(number).toStdString());
            EXPECT_TRUE(text::isNumeric(written(number)));
            EXPECT_EQ(text::toLong(written(number)), value);
        }
        for (const QStringView number :
             {u"2147483648", u"2147483647#5", u"-2147483649", u"99999999999999999999"}) {
            SCOPED_TRACE(written(number).toStdString());
            EXPECT_TRUE(text::isNumeric(written(number)));
            EXPECT_EQ(failureOf([&] { text::toLong(written(number)); }), 6);
        }
        EXPECT_EQ(text::toLong(written(u"2147483647#4")), 2147483647);
        EXPECT_EQ(text::toLong(u"-2147483648"), std::numeric_limits<qint32>::min());
        EXPECT_EQ(failureOf([] { text::toLong(QString(400, u'9')); }), 6);
        for (const QStringView number : {u"", u"  ", u"+", u"#", u"12a", u"1 2", u"- 1", u"1-", u"1#2#3",
                                         u"1@5", u"1e3", u"٣", u"1 or 1=1"}) {
            SCOPED_TRACE(written(number).toStdString());
            EXPECT_FALSE(text::isNumeric(written(number)));
            EXPECT_EQ(failureOf([&] { text::toLong(written(number)); }), 13);
        }
    }
}

TEST_F(Text, HalvesAreRoundedToTheEvenNeighbour) {
    const double cases[][2] = {{0.5, 0},   {1.5, 2},   {2.5, 2},       {-0.5, 0},
                               {-1.5, -2}, {-2.5, -2}, {2.51, 3},      {-2.51, -3},
                               {-0.3, 0},  {7, 7},     {1e300, 1e300}, {0.49999999999999994, 0}};
    for (const auto& [number, rounded] : cases)
        EXPECT_EQ(text::roundToEven(number), rounded) << number;
}
