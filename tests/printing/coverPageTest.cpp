#include "printing/coverPage.h"

#include "support/TemporaryProgram.h"
#include "support/conversions.h"

using namespace Qt::StringLiterals;

namespace {

QString page(const QString& options) {
    return u"<html><select name=\"x\"><option>a</option></select>"
           "<select name=\"dvd\" align=\"center\" size=25 onchange=\"show()\">\r\n"_s +
           options + u"</select></html>"_s;
}

/// The code, both titles and the language of an option, joined by "|".
QString cut(const QString& option) {
    const coverPage::Cover cover = coverPage::ZiskejData(option);
    return QStringList{cover.code, cover.czechTitle, cover.originalTitle, cover.language}.join(u'|');
}

}  // namespace

TEST(CoverPageTest, APageIsCutIntoItsOptions) {
    EXPECT_EQ(coverPage::ZpracujZaznamy(page(u"<option value=\"1\">A&nbsp(B)</option>\r\n"
                                             "<option value=\"2\">C&nbsp(D)</option>rest"_s)),
              QStringList({u"<option value=\"1\">A&nbsp(B)"_s, u"\r\n<option value=\"2\">C&nbsp(D)"_s}));
    EXPECT_EQ(coverPage::ZpracujZaznamy(page({})), QStringList());
    // Letter case and the markers' own spelling count.
    EXPECT_EQ(coverPage::ZpracujZaznamy(page(u"<option value=\"1\">A</OPTION>"_s)), QStringList());
    for (const QString& broken :
         {u""_s, u"<html>Nic</html>"_s, u"<select name='dvd' align='center' size=25>"_s,
          u"<select name=\"dvd\" align=\"center\" size=25"_s,
          u"<select name=\"dvd\" align=\"center\" size=25>"_s}) {
        EXPECT_EQ(failureOf([&] { coverPage::ZpracujZaznamy(broken); }), 5) << broken.toStdString();
    }
}

TEST(CoverPageTest, AnOptionIsCutIntoCodeTitlesAndLanguage) {
    expectEach(&cut, {u"<option value=\"1234\">Jedna&nbsp(One) [EN]→1234|Jedna|One|Anglicky",
                      u"<option value=\"1\"> [EN]Dva[EN] &nbsp Two [AV][SE]→1|Dva|Two|Anglicky",
                      u"<option value=\"1\">Tři[AV]&nbsp(Three[SE])→1|Tři|Three|"});
    // Five characters are skipped, and one bracket goes at each end.
    expectEach(&cut,
               {u"<option value=\"1\">A&nbsp;(B)→1|A|;(B|", u"<option value=\"1\">A&nbsp((B))→1|A|(B)|",
                u"<option value=\"1\">A&nbspB (2)→1|A|B (2|",
                u"<option value=\"1\">A&nbspB&nbspC→1|A|B&nbspC|", u"<option value=\"1\">&nbsp()→1|||"});
    // No blank: nothing is before it, and what is behind begins at the fifth character.
    expectEach(&cut, {u"<option value=\"1\">Samota→1||ta|"});
    // Codes as odd as they come.
    expectEach(&cut, {u"<option value=\"../x?y&amp;'\">A&nbspB→../x?y&amp;'|A|B|",
                      u"<option value=\"a\"b\"c\">A&nbspB→a|A|B|",
                      u"<option value=\"<b>7</b>\">A&nbspB→<b>7</b>|7</b>\">A|B|",
                      u"<option value=\"\">A&nbspB→|A|B|"});
    for (const QString& broken : {u"<option>A&nbspB"_s, u"<option value=\"1>A&nbspB"_s})
        EXPECT_EQ(failureOf([&] { coverPage::ZiskejData(broken); }), 5) << broken.toStdString();
}
