#include "lookup/webText.h"

#include <array>

#include "platform/codepage.h"

using namespace Qt::StringLiterals;

namespace {

struct Replacement {
    QStringView find;
    QStringView by;
};

template <std::size_t Count>
QString replaced(QString text, const std::array<Replacement, Count>& replacements) {
    for (const auto& [find, by] : replacements)
        text.replace(find.toString(), by.toString());
    return text;
}

}  // namespace

QString UpravText(const QString& term) {
    constexpr uchar firstEscaped = 123;
    QString result;
    for (const QChar letter : term) {
        const auto code = static_cast<uchar>(codepage::toWindows1250(QStringView(&letter, 1)).at(0));
        if (code >= firstEscaped) {
            result += u'%' + QString::number(code, 16).toUpper();
        } else {
            result += letter;
        }
    }
    return result.replace(u' ', u'+');
}

QString OdebratTagy(const QString& text) {
    // In this order: "&amp;nbsp;" becomes "&nbsp;" but "&amp;quot;" a quote.
    static constexpr std::array<Replacement, 12> replacements{{{u"&nbsp;", u" "},
                                                               {u"&eacute;", u"é"},
                                                               {u"&iacute;", u"í"},
                                                               {u"&ccedil;", u"ç"},
                                                               {u"&ouml;", u"ö"},
                                                               {u"&amp;", u"&"},
                                                               {u"&quot;", u"\""},
                                                               {u"<b>", u""},
                                                               {u"<i>", u""},
                                                               {u"<br>", u"\r\n"},
                                                               {u"</b>", u""},
                                                               {u"</i>", u""}}};
    return replaced(text, replacements);
}

QString PREVOD(const QString& text) {
    static constexpr std::array<Replacement, 4> replacements{
        {{u"š", u"ą"}, {u"ž", u"ľ"}, {u"Š", u"©"}, {u"Ž", u"®"}}};
    return replaced(text, replacements);
}
