#include "platform/collation.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace Qt::StringLiterals;

TEST(Collation, OrderIsTheCzechAlphabet) {
    const QStringList ordered = {u""_s,     u"10"_s,    u"9"_s,      u"Ab"_s,    u"áb"_s,    u"abc"_s,
                                 u"ac"_s,   u"Cyril"_s, u"czz"_s,    u"Čapek"_s, u"čáry"_s,  u"ďábel"_s,
                                 u"Dům"_s,  u"had"_s,   u"HŽ"_s,     u"Chata"_s, u"chůze"_s, u"Iva"_s,
                                 u"Ryba"_s, u"rzz"_s,   u"Řeka"_s,   u"Sůl"_s,   u"szz"_s,   u"Šach"_s,
                                 u"tuna"_s, u"Týn"_s,   u"Zuzana"_s, u"zzz"_s,   u"Žába"_s};
    for (qsizetype left = 0; left < ordered.size(); ++left) {
        for (qsizetype right = left + 1; right < ordered.size(); ++right) {
            SCOPED_TRACE((ordered[left] + u" before "_s + ordered[right]).toStdString());
            EXPECT_LT(collation::compare(ordered[left], ordered[right]), 0);
            EXPECT_GT(collation::compare(ordered[right], ordered[left]), 0);
        }
    }
}

TEST(Collation, LetterCaseDoesNotCount) {
    EXPECT_EQ(collation::compare(u"příliš žluťoučký CHRT", u"PŘÍLIŠ ŽLUŤOUČKÝ chrt"), 0);
}
