#include "CsvReader.h"

#include "support/TemporaryProgram.h"

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
    const std::pair<QString, QString> cases[] = {
        {u""_s, u""_s},
        {u"\r\n\n"_s, u""_s},
        {u"a,b\r\nc,d\r\n"_s, u"[a|b][c|d]"_s},
        {u"a,b\nc,d"_s, u"[a|b][c|d]"_s},
        {u"a\n\n\r\nb\n"_s, u"[a][b]"_s},
        {u"a,\n,\n,b\r\nc,"_s, u"[a|][|][|b][c|]"_s},
        {u"\"\"\n\"\",\"\""_s, u"[][|]"_s},
        {u"\"a,b\",\"c \"\"d\"\"\",\"\"\"\"\r\n"_s, u"[a,b|c \"d\"|\"]"_s},
        {u"\"a\r\nb\n\nc\",d\r\ne,f"_s, u"[a\r\nb\n\nc|d][e|f]"_s},
        {u" a , \tb\n"_s, u"[ a | \tb]"_s},
        {u"a\rb\n"_s, u"[a\rb]"_s}};
    for (const auto& [text, records] : cases)
        EXPECT_EQ(recordsOf(text), records) << text.toStdString();
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
