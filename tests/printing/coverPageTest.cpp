#include "printing/coverPage.h"

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;
using coverPage::Cover;

namespace {

QString page(const QString& options) {
    return u"<html><select name=\"x\"><option>a</option></select>"
           "<select name=\"dvd\" align=\"center\" size=25 onchange=\"show()\">\r\n"_s +
           options + u"</select></html>"_s;
}

}  // namespace

namespace coverPage {
void PrintTo(const Cover& cover, std::ostream* out) {
    *out << QStringList{cover.code, cover.czechTitle, cover.originalTitle, cover.language}
                .join(u'|')
                .toStdString();
}
}  // namespace coverPage

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
    const std::pair<QString, Cover> cases[] = {
        {u"<option value=\"1234\">Jedna&nbsp(One) [EN]"_s, {u"1234"_s, u"Jedna"_s, u"One"_s, u"Anglicky"_s}},
        {u"<option value=\"1\"> [EN]Dva[EN] &nbsp Two [AV][SE]"_s,
         {u"1"_s, u"Dva"_s, u"Two"_s, u"Anglicky"_s}},
        {u"<option value=\"1\">Tři[AV]&nbsp(Three[SE])"_s, {u"1"_s, u"Tři"_s, u"Three"_s, u""_s}},
        // Five characters are skipped, and one bracket goes at each end.
        {u"<option value=\"1\">A&nbsp;(B)"_s, {u"1"_s, u"A"_s, u";(B"_s, u""_s}},
        {u"<option value=\"1\">A&nbsp((B))"_s, {u"1"_s, u"A"_s, u"(B)"_s, u""_s}},
        {u"<option value=\"1\">A&nbspB (2)"_s, {u"1"_s, u"A"_s, u"B (2"_s, u""_s}},
        {u"<option value=\"1\">A&nbspB&nbspC"_s, {u"1"_s, u"A"_s, u"B&nbspC"_s, u""_s}},
        {u"<option value=\"1\">&nbsp()"_s, {u"1"_s, u""_s, u""_s, u""_s}},
        // No blank: nothing is before it, and what is behind begins at the fifth character.
        {u"<option value=\"1\">Samota"_s, {u"1"_s, u""_s, u"ta"_s, u""_s}},
        // Codes as odd as they come.
        {u"<option value=\"../x?y&amp;'\">A&nbspB"_s, {u"../x?y&amp;'"_s, u"A"_s, u"B"_s, u""_s}},
        {u"<option value=\"a\"b\"c\">A&nbspB"_s, {u"a"_s, u"A"_s, u"B"_s, u""_s}},
        {u"<option value=\"<b>7</b>\">A&nbspB"_s, {u"<b>7</b>"_s, u"7</b>\">A"_s, u"B"_s, u""_s}},
        {u"<option value=\"\">A&nbspB"_s, {u""_s, u"A"_s, u"B"_s, u""_s}},
    };
    for (const auto& [option, cover] : cases)
        EXPECT_EQ(coverPage::ZiskejData(option), cover) << option.toStdString();
    for (const QString& broken : {u"<option>A&nbspB"_s, u"<option value=\"1>A&nbspB"_s})
        EXPECT_EQ(failureOf([&] { coverPage::ZiskejData(broken); }), 5) << broken.toStdString();
}
