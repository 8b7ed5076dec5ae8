#include "lookup/Module1.h"
#include "lookup/Module2.h"
#include "lookup/webText.h"
#include "support/TemporaryProgram.h"
#include "support/conversions.h"

using Utf8File = TemporaryProgram;

TEST(HtmlText, BlanksBreaksAndTagsAreReadInOnePass) {
    expectEach(&HtmlNaText,
               {u"→", u"a   b→a b", u"a \t b→a \t b", u"a\r\n  b→a b", u"a\r\n\r\nb→a  b", u"a\n\nb→a b",
                u"a\r\rb→a  b", u" \r b→  b", u"a<BR>b→a\r\nb", u"a<br />b→ab", u"a<td>b</td>c→ab|c",
                u"a<p>b</P>c</div>d→a\r\n\r\nbc\r\n\r\nd", u"a</tr>b</Pre>c<p class=x>d<pre>e→a\r\nb\r\ncde",
                u"1 < 2→1  2", u"<<b>>→>", u"a<→a", u"<>a→a"});
    expectEach(&HtmlNaText,
               {u"<title>t</title><BODY BGCOLOR=X>ČÁp</body>z→ČÁp", u"a</body>b→ab", u"a<body b→body b",
                u"<body>a</BODY>b</body>c→a", u"ß<body>ß</body>→ß", u"<bodyguard>a→a"});
}

TEST(HtmlText, EntitiesAreCzechLettersNamedAfterLatin1AndNeedABlankBehind) {
    expectEach(&HtmlNaText,
               {u"a &amp; b→a & b", u"a&amp;b→a&amp;b", u"x &foo; y→x &foo; y", u"x &eacute; y→x é y",
                u"&#232; x→&#232; x", u"&shy; &plusmn; &plusm; x→&shy; &plusmn; ± x",
                u"&brvbar;&nbsp;&lt;p&gt;&quot; x→| <p>\" x", u"&; x→&; x", u"& a; b→& a; b",
                u"&a<br>b; x→&a<br>b; x", u"&Eacute; &eacute→É &eacute", u"&aacute; &aacute;→á &aacute;"});
    const QStringList names =
        u"egrave ecirc igrave oslash ugrave ograve iuml thorn iexcl yen ordf sup1 frac14 yuml aacute uuml "
        "szlig Egrave Oslash Igrave times THORN Auml"_s.split(u' ');
    EXPECT_EQ(HtmlNaText(u'&' + names.join(u";&"_s) + u"; "_s), u"čęěřůňďţˇĄŞąĽ˙áüßČŘĚ×ŢÄ "_s);
}

TEST_F(Utf8File, IsDecodedWhateverIsBrokenInIt) {
    EXPECT_EQ(UTF8NaText("\xEF\xBB\xBFp\xC5\x99\xF0\x9F\x8E\xAC"), u"\uFEFFp\u0159\U0001F3AC"_s);
    EXPECT_EQ(UTF8NaText("a\xFF\xFE z\xC5"), u"a\uFFFD\uFFFD z\uFFFD"_s);
    EXPECT_EQ(UTF8NaText(QByteArrayView("a\0b", 3)), QString(u"a\0b"_s));
    EXPECT_EQ(failureOf([&] { NactiUTF8Soubor(at(u"page"_s)); }), errors::fileNotFound);
    write(u"page"_s, {});
    EXPECT_EQ(NactiUTF8Soubor(at(u"page"_s)), u""_s);
}

TEST(WebText, TermsAndFieldsAreConverted) {
    expectEach(&UpravText, {u"→", u"Černý pes→%C8ern%FD+pes", u"a&b=c%?#z→a&b=c%?#z",
                            u"{|}~\u007f€→%7B%7C%7D%7E%7F%80", u"я+→я+"});
    expectEach(&OdebratTagy, {u"&amp;nbsp;&nbsp;&eacute;&iacute;&ccedil;&ouml;&quot;→&nbsp; éíçö\"",
                              u"<b>a</b><i>b</i><br>c<B>→ab\r\nc<B>"});
    expectEach(&PREVOD, {u"Šťastný Žižka→©ťastný ®iľka", u"š→ą"});
}
