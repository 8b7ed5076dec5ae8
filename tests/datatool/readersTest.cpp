#include "datatool/CsvReader.h"
#include "datatool/ExportReader.h"
#include "datatool/Progress.h"
#include "datatool/shownText.h"
#include "support/TemporaryProgram.h"
#include "support/conversions.h"

namespace {

/// Each record as its line and its fields between bars, "1[a|b]2[c|d]", and the line of a failure, "Řádek 3".
QString recordsOf(const QString& text) {
    CsvReader reader(text);
    QString records;
    try {
        while (const auto fields = reader.next())
            records += u"%1[%2]"_s.arg(reader.line()).arg(fields->join(u'|'));
    } catch (const RuntimeError& failure) {
        return failure.description().section(u':', 0, 0);
    }
    return records;
}

/// All records, each with its fields between bars, read in pieces of `length` bytes.
std::string exportedRecords(const std::string& output, std::size_t length) {
    std::size_t at = 0;
    ExportReader reader([&](QByteArray& bytes) {
        if (at >= output.size()) return false;
        bytes = QByteArray::fromStdString(output.substr(at, length));
        at += length;
        return true;
    });
    std::string records;
    const qint32 failure = failureOf([&] {
        for (QByteArrayList fields; reader.next(fields); records += ']') {
            records += '[';
            for (const QByteArray& field : fields)
                records += field.toStdString() + '|';
        }
    });
    return failure == 0 ? records : "refused";
}

}  // namespace

TEST(CsvReader, RecordsAndMisplacedQuotesAreToldWithTheirLine) {
    for (const QStringView text :
         {u"→", u"\r\n\n→", u"a,b\r\nc,d\r\n→1[a|b]2[c|d]", u"a,b\nc,d→1[a|b]2[c|d]",
          u"a\n\n\r\nb\n→1[a]4[b]", u"a,\n,\n,b\r\nc,→1[a|]2[|]3[|b]4[c|]", u"\"\"\n\"\",\"\"→1[]2[|]",
          u"\"a,b\",\"c \"\"d\"\"\",\"\"\"\"\r\n→1[a,b|c \"d\"|\"]", u" a , \tb\n→1[ a | \tb]",
          u"\"a\r\nb\n\nc\",d\r\n\r\n\ne,f→1[a\r\nb\n\nc|d]7[e|f]", u"a\rb\n→1[a\rb]", u"\"a→Řádek 1",
          u"a\r\n\"x\r\ny\",\"open\r\n\r\n→Řádek 3", u"a\n\"b\"\"\n→Řádek 2", u"a\n\n\"b\"c,d\n→Řádek 3",
          u"\"a\" ,b→Řádek 1", u"a, \"b\"\n→Řádek 1"})
        expectEach(&recordsOf, {text});
}

TEST(ExportReader, FieldsMayHoldAnyBytesAndComeInAnyPiecesButNotBreakOff) {
    using namespace std::string_literals;
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a,b\n1,\n", "[a|b|][1||]"},
        {"\"a\"\"b\",\"\"\n\"\"\"\",\"\n\"\n", "[a\"b||][\"|\n|]"},
        {"1,\"\0\r\n,\"\"\xFF\0\",\n"s, "[1|\0\r\n,\"\xFF\0||]"s}};
    for (const std::size_t length : {1U, 2U, 3U, 100U}) {
        for (const auto& [output, records] : cases)
            EXPECT_EQ(exportedRecords(output, length), records) << length;
        for (const char* output : {"a", "a,", "a,b", "\"a", "\"a\"\"", "\"a\"b\n", "a\"b\"\n"})
            EXPECT_EQ(exportedRecords(output, length), "refused") << output;
    }
}

TEST(ShownText, IsOneLineThatNoTerminalObeysAndNotTooLong) {
    for (const QStringView text : {u"→", u"Příběh „A“→Příběh „A“", u"a\r\nb\tc\nd→a b c d",
                                   u"\x1b[31mX\x7f\x9b\u202Ey→\uFFFD[31mX\uFFFD\uFFFD\uFFFDy"})
        expectEach(&shownText, {text});
    EXPECT_EQ(shownText(QString(200, u'a')), QString(200, u'a'));
    EXPECT_EQ(shownText(QString(199, u'a') + u"\U0001F600b"_s), QString(199, u'a') + u'…');
}

TEST(Progress, FitsTheTerminal) {
    const std::tuple<int, qint64, QString> cases[] = {
        {80, 4, u"Zápis filmů                     [###############...............]  50 %"_s},
        {71, 8, u"Zápis filmů                     [##############################] 100 %"_s},
        {70, 8, u"Zápis filmů"_s.leftJustified(63) + u" 100 %"_s},
        {20, 4, u"Zápis filmů    50 %"_s},
        {12, 4, u"Zápis  50 %"_s},
        {4, 4, u" 50"_s}};
    for (const auto& [columns, done, shown] : cases)
        EXPECT_EQ(progressText(u"Zápis filmů"_s, done, 8, columns), shown) << columns;
    EXPECT_EQ(progressText(u"Zápis filmů"_s, 4, 0, 8), u"Zápis f"_s);
}
