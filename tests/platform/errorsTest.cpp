#include "platform/errors.h"

#include <stdexcept>

#include "support/TemporaryProgram.h"

using Errors = TemporaryProgram;

TEST_F(Errors, SkippedFailureStaysPendingUntilTheNextOneOrClear) {
    EXPECT_THROW(skipFailure([] { throw std::logic_error("fault"); }), std::logic_error);
    EXPECT_FALSE(Err.pending());
    EXPECT_FALSE(skipFailure([] { throw RuntimeError(errors::objectClosed); }));
    EXPECT_FALSE(skipFailure([] { throw RuntimeError(errors::typeMismatch, u"Žádné číslo."_s); }));
    EXPECT_TRUE(skipFailure([] {}));
    EXPECT_TRUE(Err.pending());
    EXPECT_EQ(Err.Number(), 13);
    EXPECT_EQ(Err.Description(), u"Žádné číslo."_s);
    Err.Clear();
    EXPECT_FALSE(Err.pending());
    EXPECT_EQ(Err.Description(), QString());
}

TEST_F(Errors, EachNumberHasItsOwnDescription) {
    QStringList seen{errors::description(1)};
    EXPECT_FALSE(seen.first().isEmpty());
    for (const qint32 number :
         {5,     6,           7,           9,           11,          13,          53,         61,   75,
          91,    94,          380,         457,         3021,        3219,        3265,       3704, 3705,
          35601, -2147467259, -2147217911, -2147217843, -2147217900, -2147217873, -2147217885}) {
        const QString description = RuntimeError(number).description();
        EXPECT_FALSE(seen.contains(description)) << number;
        seen += description;
    }
    EXPECT_STREQ(RuntimeError(-7, u"Špatně."_s).what(), "-7: \xC5\xA0patn\xC4\x9B.");
}
