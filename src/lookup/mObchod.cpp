#include "lookup/mObchod.h"

#include "lookup/mModInetPic.h"
#include "platform/errors.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;
using Field = LookupField;

namespace {

QString fromFirstIgnoringCase(const QString& text, QStringView marker) {
    return text::mid(text, text::inStrIgnoringCase(text, marker));
}

/// The first characters of a text. @throws RuntimeError 5 when the number is negative.
QString leftOf(const QString& text, qsizetype length) {
    return text::mid(text, 1, length);
}

/// One reading of a film's page.
class Cutting {
 public:
    Cutting(const QString& page, const QString& shopRoot, obchod::DetailWindow& window)
        : page_(page), shopRoot_(shopRoot), window_(window) {}

    void run() {
        step([&] { window_.showWait(); });
        step([&] { window_.stopBrowser(); });
        cutTitle();
        cutRow(u"Žánr:", Field::genre);
        cutRow(u"Originální název:", Field::originalTitle);
        cutRow(u"Režie:", Field::director);
        cutRow(u"Herci:", Field::cast);
        cutRow(u"Délka (min.):", Field::length, true);
        cutRow(u"Země původu:", Field::country, true);
        cutRow(u"Rok výroby:", Field::year, true);
        cutDescription();
        cutPicture();
        window_.yield();
        step([&] { window_.hideWait(); });
    }

 private:
    /// A cut that fails leaves the piece unchanged.
    template <typename Statement>
    void step(Statement&& statement) {
        skipFailure(statement);
    }
    void remove(QStringView what, Qt::CaseSensitivity sensitivity = Qt::CaseSensitive) {
        piece_.remove(what.toString(), sensitivity);
    }
    void put(Field field) {
        piece_ = text::trim(piece_);
        step([&] { window_.setText(field, piece_); });
    }

    void cutTitle() {
        constexpr QStringView heading = u"<H2 class=title1>";
        step([&] { piece_ = text::fromFirst(page_, heading); });
        remove(heading);
        step([&] { piece_ = leftOf(piece_, text::inStr(text::upperCase(piece_), u"<A") - 1); });
        put(Field::czechTitle);
        window_.yield();
    }

    void cutRow(QStringView label, Field field, bool hardBlanks = false) {
        step([&] { piece_ = text::fromFirst(page_, label); });
        step([&] { piece_ = text::mid(piece_, text::inStr(text::upperCase(piece_), u"<TD")); });
        step([&] { piece_ = text::fromFirst(piece_, u">"); });
        step([&] { piece_ = leftOf(piece_, text::inStr(piece_, u"<")); });
        remove(u"<");
        remove(u">");
        if (hardBlanks) remove(u"&nbsp;");
        put(field);
        window_.yield();
    }

    void cutDescription() {
        step([&] { piece_ = text::fromFirst(page_, u"Popis:"); });
        step([&] { piece_ = text::mid(piece_, text::inStr(text::upperCase(piece_), u"<TD")); });
        step([&] { piece_ = text::mid(piece_, text::inStr(text::upperCase(piece_), u"</TABLE>")); });
        remove(u"</TABLE>", Qt::CaseInsensitive);
        step([&] { piece_ = leftOf(piece_, text::inStr(text::upperCase(piece_), u"</TD>")); });
        for (const QStringView mark : {u"<BR>", u"<", u">", u"&nbsp;"})
            remove(mark, Qt::CaseInsensitive);
        put(Field::description);
        window_.yield();
    }

    void cutPicture() {
        step([&] { piece_ = fromFirstIgnoringCase(page_, u"<a href='javascript:open_wnd_photo"); });
        window_.yield();
        step([&] { piece_ = text::mid(piece_, text::inStr(text::upperCase(piece_), u"SRC=")); });
        step([&] { piece_ = text::mid(piece_, text::inStr(text::upperCase(piece_), u"IMAGES")); });
        remove(u"</TABLE>", Qt::CaseInsensitive);
        step([&] { piece_ = leftOf(piece_, text::inStr(piece_, u">")); });
        for (const QStringView mark : {u"<BR>", u"<", u">", u"&nbsp;", u"\""})
            remove(mark, Qt::CaseInsensitive);
        put(Field::picture);
        window_.yield();
        step([&] {
            window_.setText(Field::picture,
                            NactiObrazekObchodu(shopRoot_, window_.text(Field::picture),
                                                [this](const QString& path) { window_.showPicture(path); }));
        });
        window_.yield();
        step([&] { window_.repaintPicture(); });
    }

    const QString& page_;
    const QString& shopRoot_;
    obchod::DetailWindow& window_;
    QString piece_;  // shared by all fields, never cleared in between
};

}  // namespace

QString obchod::ziskejNazev(const QString& link) {
    QString title = text::fromFirst(link, u"id_zbozi=");
    title = title.sliced(title.indexOf(u'>') + 1);
    title.remove(u"<FONT style=\"COLOR: green\">"_s);
    return title.remove(u"</FONT>"_s).remove(u'<').remove(u'>');
}

qint32 obchod::GetID(const QString& link) {
    constexpr QStringView name = u"id_zbozi=";
    const QString id = text::mid(link, text::inStr(link, name) + name.size());
    return text::toLong(leftOf(id, text::inStr(id, u"&") - 1));
}

std::vector<ListEntry> obchod::NactiSeznamObchod(const QString& page) {
    std::vector<ListEntry> films;
    const QString upper = text::upperCase(page);
    for (qsizetype at = page.indexOf(u"<A class=zbozi title="); at >= 0;
         at = page.indexOf(u"<A class=zbozi title=", at)) {
        const qsizetype end = upper.indexOf(u"</A", at);
        // The "<" of the closing tag belongs to the link; a link without that tag is empty.
        const QString link = end < 0 ? QString() : page.sliced(at, end - at + 1);
        const QString title = ziskejNazev(link);
        films.push_back({title, GetID(link)});
        at = end + 1;
    }
    return films;
}

void obchod::NactiDetailObchod(const QString& page, const QString& shopRoot, DetailWindow& window) {
    Cutting(page, shopRoot, window).run();
}
