#include "datatool/CsvReader.h"

#include "support/TemporaryProgram.h"
#include "support/conversions.h"

using namespace Qt::StringLiterals;

namespace {

/// All records, each with its fields between bars: "[a|b][c|d]".
QString recordsOf(const QString& text) {
    CsvReader reader(text);
    QString records;
    while (const auto fields = reader.next())
        records += u'[' + fields->join(u'|') + u']';
    return records;
}

}  // namespace

TEST(CsvReader, RecordsAreTakenApart) {
    expectEach(
        &recordsOf,
        {u"→", u"\r\n\n→", u"a,b\r\nc,d\r\n→[a|b][c|d]", u"a,b\nc,d→[a|b][c|d]", u"a\n\n\r\nb\n→[a][b]",
         u"a,\n,\n,b\r\nc,→[a|][|][|b][c|]", u"\"\"\n\"\",\"\"→[][|]",
         u"\"a,b\",\"c \"\"d\"\"\",\"\"\"\"\r\n→[a,b|c \"d\"|\"]",
         u"\"a\r\nb\n\nc\",d\r\ne,f→[a\r\nb\n\nc|d][e|f]", u" a , \tb\n→[ a | \tb]", u"a\rb\n→[a\rb]"});
}

TEST(CsvReader, LineIsTheOneOnWhichTheRecordBegins) {
    CsvReader reader(u"a,\"x\r\ny\n\"\r\n\r\n\nb,c\r\nd,e"_s);
    for (const qint64 line : {1, 6, 7}) {
        ASSERT_TRUE(reader.next());
        EXPECT_EQ(reader.line(), line);
    }
    EXPECT_FALSE(reader.next());
}

TEST(CsvReader, MisplacedQuotesAreRefusedWithTheirLine) {
    const std::pair<QString, int> cases[] = {
        {u"\"a"_s, 1},           {u"a\nb,\"c\nd\ne"_s, 2},  {u"a\r\n\"x\r\ny\",\"open\r\n\r\n"_s, 3},
        {u"a\n\"b\"\"\n"_s, 2},  {u"a\n\n\"b\"c,d\n"_s, 3}, {u"\"a\" ,b"_s, 1},
        {u"a\nb\"c\",d\n"_s, 2}, {u"a, \"b\"\n"_s, 1}};
    for (const auto& [text, line] : cases) {
        SCOPED_TRACE(text.toStdString());
        try {
            ADD_FAILURE() << "accepted as " << recordsOf(text).toStdString();
        } catch (const RuntimeError& failure) {
            EXPECT_TRUE(failure.description().startsWith(u"Řádek %1:"_s.arg(line))) << failure.what();
        }
    }
}
