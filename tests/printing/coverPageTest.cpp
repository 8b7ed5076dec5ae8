#include "printing/coverPage.h"

#include "support/TemporaryProgram.h"
#include "support/conversions.h"

namespace {

const QString list = u"<select name=\"dvd\" align=\"center\" size=25"_s;

/// The code, both titles and the language of an option, joined by "|".
QString parsed(const QString& option) {
    const coverPage::Cover cover = coverPage::ZiskejData(option);
    return QStringList{cover.code, cover.czechTitle, cover.originalTitle, cover.language}.join(u'|');
}

}  // namespace

TEST(CoverPageTest, APageIsSplitIntoItsOptions) {
    const auto options = [](const QString& html) {
        return coverPage::ZpracujZaznamy(u"<html><select name=\"x\"><option>a</option></select>"_s + list +
                                         u" onchange=\"show()\">\r\n"_s + html + u"</select></html>"_s)
            .join(u"; "_s);
    };
    // Letter case counts.
    expectEach(options, {u"<option value=\"1\">A</option>\r\n<option value=\"2\">B</option>rest→"
                         "<option value=\"1\">A; \r\n<option value=\"2\">B",
                         u"→", u"<option value=\"1\">A</OPTION>→"});
    for (const QString& broken : {u""_s, u"<html>Nic</html>"_s, QString(list).replace(u'"', u'\'') + u'>',
                                  list, QString(list + u'>')})
        EXPECT_EQ(failureOf([&] { coverPage::ZpracujZaznamy(broken); }), 5) << broken.toStdString();
}

TEST(CoverPageTest, AnOptionIsSplitIntoCodeTitlesAndLanguage) {
    // Five characters of the blank are skipped and one bracket goes at each end; without a blank there is
    // no Czech title, and the other one begins at the fifth character.
    expectEach(
        &parsed,
        {u"<option value=\"1234\">Jedna&nbsp(One) [EN]→1234|Jedna|One|Anglicky",
         u"<option value=\"1\"> [EN]Dva[EN] &nbsp Two [AV][SE]→1|Dva|Two|Anglicky",
         u"<option value=\"1\">Tři[AV]&nbsp(Three[SE])→1|Tři|Three|",
         u"<option value=\"1\">A&nbsp;(B)→1|A|;(B|", u"<option value=\"1\">A&nbsp((B))→1|A|(B)|",
         u"<option value=\"1\">A&nbspB (2)→1|A|B (2|", u"<option value=\"1\">A&nbspB&nbspC→1|A|B&nbspC|",
         u"<option value=\"1\">&nbsp()→1|||", u"<option value=\"1\">Samota→1||ta|",
         u"<option value=\"../x?y&amp;'\">A&nbspB→../x?y&amp;'|A|B|",
         u"<option value=\"a\"b\"c\">A&nbspB→a|A|B|",
         u"<option value=\"<b>7</b>\">A&nbspB→<b>7</b>|7</b>\">A|B|"});
    for (const QString& broken : {u"<option>A&nbspB"_s, u"<option value=\"1>A&nbspB"_s})
        EXPECT_EQ(failureOf([&] { coverPage::ZiskejData(broken); }), 5) << broken.toStdString();
}
