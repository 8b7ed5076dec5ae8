#include "platform/codepage.h"

#include <gtest/gtest.h>

#include "support/printers.h"

using namespace Qt::StringLiterals;

TEST(Codepage, CzechLettersAndSignsHaveTheirKnownBytes) {
    const QString letters = u"šžŠŽřěťŤčČďĎňŇůŮáíýéúÁÍÝÉÚóÓŘĚľĽ€„“–…ßAz09"_s;
    const QByteArray bytes(
        "\x9A\x9E\x8A\x8E\xF8\xEC\x9D\x8D\xE8\xC8\xEF\xCF\xF2\xD2\xF9\xD9\xE1\xED\xFD\xE9\xFA\xC1\xCD\xDD\xC9"
        "\xDA\xF3\xD3\xD8\xCC\xBE\xBC\x80\x84\x93\x96\x85\xDF"
        "Az09");
    EXPECT_EQ(codepage::toWindows1250(letters), bytes);
    EXPECT_EQ(codepage::fromWindows1250(bytes), letters);
}

TEST(Codepage, EveryByteSurvivesTheWayThereAndBack) {
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const QString text = codepage::fromWindows1250(all);
    ASSERT_EQ(text.size(), 256);
    EXPECT_FALSE(text.contains(QChar::ReplacementCharacter));
    EXPECT_EQ(codepage::toWindows1250(text), all);
    for (const char16_t unused : u"\u0081\u0083\u0088\u0090\u0098"_s.toStdU16String())
        EXPECT_EQ(text[unused].unicode(), unused);
}

TEST(Codepage, EachForeignCharacterBecomesOneQuestionMark) {
    const std::pair<QString, QByteArray> cases[] = {{u"жук"_s, "???"},
                                                    {u"ñ\u0080ÿ"_s, "???"},
                                                    {u"a\U0001F3ACb"_s, "a?b"},
                                                    {u"\U0001F3AC\U0001F3AC"_s, "??"},
                                                    {QChar(0xD83C) + u"x"_s, "?x"},
                                                    {u"x"_s + QChar(0xDFAC), "x?"}};
    for (const auto& [text, bytes] : cases)
        EXPECT_EQ(codepage::toWindows1250(text), bytes) << text.toStdString();
}
