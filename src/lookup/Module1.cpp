#include "lookup/Module1.h"

#include <QHash>

#include "platform/codepage.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

/// The HTML 4 entity names of the Latin-1 characters from 160 on, in order. One is missing and one misspelt,
/// so &shy; and &plusmn; are unknown.
const QStringList& latin1Names() {
    static const QStringList names =
        u"nbsp iexcl cent pound curren yen brvbar sect uml copy ordf laquo not - reg macr deg plusm sup2 "
        "sup3 acute micro para middot cedil sup1 ordm raquo frac14 frac12 frac34 iquest Agrave Aacute "
        "Acirc Atilde Auml Aring AElig Ccedil Egrave Eacute Ecirc Euml Igrave Iacute Icirc Iuml ETH "
        "Ntilde Ograve Oacute Ocirc Otilde Ouml times Oslash Ugrave Uacute Ucirc Uuml Yacute THORN szlig "
        "agrave aacute acirc atilde auml aring aelig ccedil egrave eacute ecirc euml igrave iacute icirc "
        "iuml eth ntilde ograve oacute ocirc otilde ouml divide oslash ugrave uacute ucirc uuml yacute "
        "thorn yuml"_s.split(u' ');
    return names;
}

QHash<QString, QChar> makeEntities() {
    constexpr int firstCode = 160;
    QHash<QString, QChar> entities;
    int code = firstCode;
    for (const QString& name : latin1Names()) {
        const auto byte = static_cast<char>(code++);
        if (name != u"-") entities.insert(name, codepage::fromWindows1250({&byte, 1}).front());
    }
    entities.insert(u"nbsp"_s, u' ');
    entities.insert(u"brvbar"_s, u'|');
    entities.insert(u"amp"_s, u'&');
    entities.insert(u"quot"_s, u'"');
    entities.insert(u"lt"_s, u'<');
    entities.insert(u"gt"_s, u'>');
    return entities;
}

/// The next occurrence of a character, cached: a text full of "<" or "&" must not be searched to its end for
/// each of them.
class Next {
 public:
    Next(QStringView text, QChar wanted) : text_(text), wanted_(wanted) {}

    /// Index at or after `position`; -1 if none. Positions must not decrease.
    qsizetype from(qsizetype position) {
        if (at_ != -1 && at_ < position) at_ = text_.indexOf(wanted_, position);
        return at_;
    }

 private:
    QStringView text_;
    QChar wanted_;
    qsizetype at_ = -2;
};

QStringView body(QStringView html) {
    const qsizetype start = text::lowerCase(html).indexOf(u"<body");
    if (start < 0) return html;
    html = html.mid(start);
    html = html.mid(html.indexOf(u'>') + 1);
    const qsizetype end = text::lowerCase(html).indexOf(u"</body>");
    return end < 0 ? html : html.first(end);
}

QStringView lineBreaksFor(QStringView tag) {
    constexpr qsizetype longestName = 4;
    if (tag.size() > longestName) return {};
    const QString name = text::lowerCase(tag);
    if (name == u"p" || name == u"/div") return u"\r\n\r\n";
    if (name == u"br" || name == u"/tr" || name == u"/pre") return u"\r\n";
    if (name == u"/td") return u"|";
    return {};
}

}  // namespace

QString HtmlNaText(const QString& html) {
    static const QHash<QString, QChar> entities = makeEntities();
    const QStringView source = body(html);
    Next tagEnd(source, u'>');
    Next semicolon(source, u';');
    Next blank(source, u' ');
    QString result;
    result.reserve(source.size());
    qsizetype at = 0;
    const auto skipBlanks = [&] {
        while (at < source.size() && source[at] == u' ')
            ++at;
    };
    while (at < source.size()) {
        const QChar letter = source[at++];
        switch (letter.unicode()) {
            case u' ':
                skipBlanks();
                result += u' ';
                break;
            case u'\r':
            case u'\n':
                if (at < source.size() && source[at] == u'\n') ++at;
                skipBlanks();
                result += u' ';
                break;
            case u'<': {
                const qsizetype end = tagEnd.from(at);
                if (end < 0) break;
                result += lineBreaksFor(source.sliced(at, end - at));
                at = end + 1;
                break;
            }
            case u'&': {
                const qsizetype end = semicolon.from(at);
                if (end < 0 || end >= blank.from(at)) {
                    result += u'&';
                    break;
                }
                const QString name = source.sliced(at, end - at).toString();
                at = end + 1;
                const auto known = entities.find(name);
                if (known != entities.end()) {
                    result += *known;
                } else {
                    result += u'&' + name + u';';
                }
                break;
            }
            default:
                result += letter;
        }
    }
    return result;
}
