#include <limits>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class Value : public TemporaryProgram {
 protected:
    const QDateTime moment{QDate(2026, 3, 9), QTime(8, 5, 3), Qt::UTC};
    const DbValue null{};
    const DbValue date = moment;
    const DbValue bytes = QByteArray("\0\xFF", 2);
    const DbValue text = u" 3,5 "_s;
    const DbValue whole = qint32{-1234567};
    const DbValue floating = -1234567.5;
};

}  // namespace

TEST_F(Value, TextShowsEveryKindAsTheUserWritesIt) {
    EXPECT_EQ(text.toText(), u" 3,5 "_s);
    EXPECT_EQ(whole.toText(), u"-1234567"_s);
    EXPECT_EQ(DbValue(std::numeric_limits<qint64>::min()).toText(), u"-9223372036854775808"_s);
    EXPECT_EQ(floating.toText(), u"-1234567,5"_s);
    EXPECT_EQ(DbValue(-20000000.0).toText(), u"-20000000"_s);
    EXPECT_EQ(DbValue(0.0001).toText(), u"0,0001"_s);
    EXPECT_EQ(date.toText(), u"09.03.2026 8:05:03"_s);
    EXPECT_EQ(failureOf([&] { null.toText(); }), errors::invalidNull);
    EXPECT_EQ(failureOf([&] { bytes.toText(); }), errors::typeMismatch);
}

TEST_F(Value, WholeNumberIsTakenFromNumbersAndNumericTexts) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(whole.toLong(), -1234567);
    EXPECT_EQ(floating.toLong(), -1234568);
    EXPECT_EQ(text.toLong(), 4);
    EXPECT_EQ(DbValue(2.5).toLong(), 2);
    EXPECT_EQ(DbValue(2147483646.5).toLong(), 2147483646);
    for (const DbValue& large :
         {DbValue(qint64{2147483648}), DbValue(qint64{-2147483649}), DbValue(2147483647.5),
          DbValue(-infinite), DbValue(infinite - infinite), DbValue(u"99999999999"_s)})
        EXPECT_EQ(failureOf([&] { large.toLong(); }), errors::overflow) << testing::PrintToString(large);
    for (const DbValue& other : {date, bytes, DbValue(u"3.5"_s), DbValue(QString())})
        EXPECT_EQ(failureOf([&] { other.toLong(); }), errors::typeMismatch) << testing::PrintToString(other);
    EXPECT_EQ(failureOf([&] { null.toLong(); }), errors::invalidNull);
}

TEST_F(Value, DatesAndBytesComeOutOfTheirOwnKindOnly) {
    EXPECT_TRUE(date.toDate() == moment);
    EXPECT_EQ(bytes.toBytes(), QByteArray("\0\xFF", 2));
    for (const DbValue& other : {DbValue(u"09.03.2026"_s), whole, floating, bytes})
        EXPECT_EQ(failureOf([&] { other.toDate(); }), errors::typeMismatch);
    for (const DbValue& other : {text, whole, floating, date})
        EXPECT_EQ(failureOf([&] { other.toBytes(); }), errors::typeMismatch);
    EXPECT_EQ(failureOf([&] { null.toDate(); }), errors::invalidNull);
    EXPECT_EQ(failureOf([&] { null.toBytes(); }), errors::invalidNull);
}
