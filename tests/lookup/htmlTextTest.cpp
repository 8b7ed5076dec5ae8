#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "lookup/Module1.h"
#include "lookup/Module2.h"
#include "lookup/webText.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

void check(QString (*convert)(const QString&), const std::vector<std::pair<QString, QString>>& conversions) {
    for (const auto& [from, to] : conversions)
        EXPECT_EQ(convert(from), to) << from.toStdString();
}

}  // namespace

TEST(HtmlText, BlanksBreaksAndTagsAreReadInOnePass) {
    check(&HtmlNaText, {{u""_s, u""_s},
                        {u"a   b"_s, u"a b"_s},
                        {u"a \t b"_s, u"a \t b"_s},
                        {u"a\r\n  b"_s, u"a b"_s},
                        {u"a\r\n\r\nb"_s, u"a  b"_s},
                        {u"a\n\nb"_s, u"a b"_s},
                        {u"a\r\rb"_s, u"a  b"_s},
                        {u" \r b"_s, u"  b"_s},
                        {u"a<BR>b"_s, u"a\r\nb"_s},
                        {u"a<br />b"_s, u"ab"_s},
                        {u"a<td>b</td>c"_s, u"ab|c"_s},
                        {u"a<p>b</P>c</div>d"_s, u"a\r\n\r\nbc\r\n\r\nd"_s},
                        {u"a</tr>b</Pre>c<p class=x>d<pre>e"_s, u"a\r\nb\r\ncde"_s},
                        {u"1 < 2"_s, u"1  2"_s},
                        {u"<<b>>"_s, u">"_s},
                        {u"a<"_s, u"a"_s},
                        {u"<>a"_s, u"a"_s}});
}

TEST(HtmlText, OnlyTheBodyIsRead) {
    check(&HtmlNaText, {{u"<title>t</title><BODY BGCOLOR=X>ČÁp</body>z"_s, u"ČÁp"_s},
                        {u"a</body>b"_s, u"ab"_s},
                        {u"a<body b"_s, u"body b"_s},
                        {u"<body>a</BODY>b</body>c"_s, u"a"_s},
                        {u"ß<body>ß</body>"_s, u"ß"_s},
                        {u"<bodyguard>a"_s, u"a"_s}});
}

TEST(HtmlText, EntitiesAreCzechLettersNamedAfterLatin1AndNeedABlankBehind) {
    check(&HtmlNaText, {{u"a &amp; b"_s, u"a & b"_s},
                        {u"a&amp;b"_s, u"a&amp;b"_s},
                        {u"x &foo; y"_s, u"x &foo; y"_s},
                        {u"x &eacute; y"_s, u"x é y"_s},
                        {u"&#232; x"_s, u"&#232; x"_s},
                        {u"&shy; &plusmn; &plusm; x"_s, u"&shy; &plusmn; ± x"_s},
                        {u"&brvbar;&nbsp;&lt;p&gt;&quot; x"_s, u"| <p>\" x"_s},
                        {u"&; x"_s, u"&; x"_s},
                        {u"& a; b"_s, u"& a; b"_s},
                        {u"&a<br>b; x"_s, u"&a<br>b; x"_s},
                        {u"&Eacute; &eacute"_s, u"É &eacute"_s},
                        {u"&aacute; &aacute;"_s, u"á &aacute;"_s}});
    const QStringList names =
        u"egrave ecirc igrave oslash ugrave ograve iuml thorn iexcl yen ordf sup1 frac14 yuml aacute uuml "
        "szlig Egrave Oslash Igrave times THORN Auml"_s.split(u' ');
    EXPECT_EQ(HtmlNaText(u'&' + names.join(u";&"_s) + u"; "_s), u"čęěřůňďţˇĄŞąĽ˙áüßČŘĚ×ŢÄ "_s);
}

TEST(HtmlText, Utf8IsDecodedWhateverIsBrokenInIt) {
    EXPECT_EQ(UTF8NaText("p\xC5\x99\xC3\xAD"), u"pří"_s);
    EXPECT_EQ(UTF8NaText("a\xC5"), u"a\uFFFD"_s);
    EXPECT_EQ(UTF8NaText("a\xFF\xFE z"), u"a\uFFFD\uFFFD z"_s);
    EXPECT_EQ(UTF8NaText("\xEF\xBB\xBF"
                         "a"),
              u"\uFEFFa"_s);
    EXPECT_EQ(UTF8NaText(QByteArrayView("a\0b", 3)), QString(u"a\0b"_s));
    EXPECT_EQ(UTF8NaText("\xF0\x9F\x8E\xAC").size(), 2);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"page"_s));
    EXPECT_EQ(failureOf([&] { NactiUTF8Soubor(file.fileName()); }), errors::fileNotFound);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.close();
    file.setPermissions({});
    EXPECT_EQ(NactiUTF8Soubor(file.fileName()), u""_s);  // not even opened
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("\xC4\x8D\r\n");
    file.close();
    EXPECT_EQ(NactiUTF8Soubor(file.fileName()), u"č\r\n"_s);
}

TEST(WebText, TermsAndFieldsAreConverted) {
    check(&UpravText, {{u""_s, u""_s},
                       {u"Černý pes"_s, u"%C8ern%FD+pes"_s},
                       {u"a&b=c%?#z"_s, u"a&b=c%?#z"_s},
                       {u"{|}~\u007f€"_s, u"%7B%7C%7D%7E%7F%80"_s},
                       {u"я+"_s, u"я+"_s}});
    check(&OdebratTagy, {{u"&amp;nbsp;&nbsp;&eacute;&iacute;&ccedil;&ouml;&quot;"_s, u"&nbsp; éíçö\""_s},
                         {u"<b>a</b><i>b</i><br>c<B>"_s, u"ab\r\nc<B>"_s}});
    check(&PREVOD, {{u"Šťastný Žižka"_s, u"©ťastný ®iľka"_s}, {u"š"_s, u"ą"_s}});
}
