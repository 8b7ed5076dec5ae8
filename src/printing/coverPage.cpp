#include "printing/coverPage.h"

#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

QString before(const QString& text, QStringView marker) {
    return text::mid(text, 1, text::inStr(text, marker) - 1);
}

QString behind(const QString& text, QStringView marker) {
    return text::mid(text, text::inStr(text, marker) + marker.size());
}

}  // namespace

QStringList coverPage::ZpracujZaznamy(const QString& page) {
    QString options = text::fromFirst(page, u"<select name=\"dvd\" align=\"center\" size=25");
    options = text::fromFirst(options, u">");
    options = text::fromFirst(options, u"<");
    QStringList parts = options.split(u"</option>"_s);
    parts.removeLast();
    return parts;
}

coverPage::Cover coverPage::ZiskejData(const QString& option) {
    Cover cover;
    cover.code = before(behind(option, u"\""), u"\"");
    QString label = text::trim(behind(option, u">"));
    if (label.contains(u"[EN]")) {
        label.remove(u"[EN]"_s);
        cover.language = u"Anglicky"_s;
    }
    label.remove(u"[AV]"_s).remove(u"[SE]"_s);
    const QStringView blank = u"&nbsp";
    // A label may lack the separator; the cover is offered all the same.
    if (label.contains(blank)) cover.czechTitle = text::trim(before(label, blank));
    cover.originalTitle = text::trim(behind(label, blank));
    if (cover.originalTitle.startsWith(u'(')) cover.originalTitle.remove(0, 1);
    if (cover.originalTitle.endsWith(u')')) cover.originalTitle.chop(1);
    return cover;
}
