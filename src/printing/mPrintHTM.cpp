#include "printing/mPrintHTM.h"

#include <array>

#include "film/mBlobDATA.h"
#include "film/mObrazky.h"
#include "platform/Outside.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

QByteArray HtmlTelo;

namespace {

QString documentHead() {
    return u"<html><head>\r\n"
           "<meta http-equiv=\"Content-Language\" content=\"cs\">\r\n"
           "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1250\">\r\n"_s;
}

QString rowTemplate() {
    return u"<tr><td>&nbsp;%%1%%</td><td>&nbsp;%%2%%</td><td>&nbsp;%%3%%</td><td>&nbsp;%%4%%</td></tr>\r\n"_s;
}

QString filmTemplate() {
    return u"<table border=\"0\" cellpadding=\"0\" cellspacing=\"0\" style=\"border-collapse: collapse\" "
           "bordercolor=\"#111111\" width=\"100%\" id=\"AutoNumber1\">\r\n"
           "<tr><td width=\"100%\" style=\"font-size: 14pt; font-weight: bold\">%%1%%</td>\r\n"
           "</tr><tr><td width=\"100%\" style=\"font-size: 10px;\"><strong>Žánr: </strong>%%2%%"
           "&nbsp;&nbsp;&nbsp;<strong>Délka: </strong>%%3%%&nbsp;&nbsp;&nbsp;<strong>Stát: </strong>%%4%%"
           "&nbsp;&nbsp;&nbsp;<strong>Rok: </strong> %%5%%&nbsp;&nbsp;&nbsp;<strong>Zvuk: </strong>%%6%%"
           "</td>\r\n"
           "</tr><tr><td width=\"100%\" style=\"border-top:1px solid #000000; border-bottom:1px solid "
           "#000000; font-size: 12pt; border-left-width:1; border-right-width:1\">%%%PIC%%%&nbsp;&nbsp; "
           "%%7%%</td></tr><tr><td width=\"100%\" style=\"font-size: 10px;\"><strong>Herci: </strong>%%8%%"
           "</td></tr></table><br>"_s;
}

QString pictureTag(const QString& file) {
    return u"<img border=\"0\" src=\""_s + file + u"\"  width=\"60\" height=\"93\" style=\"float: left\">"_s;
}

/// Replaces every "%%" number "%%", for each of the texts in turn.
void fill(QString& text, int firstNumber, std::initializer_list<QStringView> values) {
    std::array<QChar, 5> placeholder{u'%', u'%', QChar(u'0' + firstNumber), u'%', u'%'};
    for (const QStringView value : values) {
        text.replace(placeholder.data(), std::ssize(placeholder), value.data(), value.size());
        placeholder[2] = QChar(placeholder[2].unicode() + 1);
    }
}

}  // namespace

QByteArray hlavickaSeznamu() {
    return codepage::toWindows1250(
        QString(documentHead() +
                u"<title>DVD</title></head><body><p><b><font size=\"6\">Seznam filmových disků"
                "</font></b></p>\r\n"
                "<table border=\"0\" cellpadding=\"0\" cellspacing=\"0\" style=\"\" width=\"100%\" "
                "id=\"AutoNumber1\">\r\n"
                "<tr><td bgcolor=\"#CCCCCC\">&nbsp;<b>Název</b></td>\r\n"
                "<td bgcolor=\"#CCCCCC\">&nbsp;<b>Žánr</b></td>\r\n"
                "<td bgcolor=\"#CCCCCC\">&nbsp;<b>Zvuk / titulky</b></td>\r\n"
                "<td bgcolor=\"#CCCCCC\">&nbsp;<b>Kat. číslo</b></td></tr>\r\n"_s));
}

QByteArray hlavickaPodrobneho() {
    return codepage::toWindows1250(
        QString(documentHead() +
                u"<title>DVD</title></head><body><p><b><font size=\"6\">Seznam DVD</font></b></p>\r\n"_s));
}

QByteArray konecSeznamu() {
    return "</table></body></html>"_ba;
}

QString GetJazyk(const DbValue& Jazyk) {
    if (Jazyk.isNull() || std::holds_alternative<QByteArray>(Jazyk.content())) return u"Neuvedeno"_s;
    const QString word = Jazyk.toText();
    if (word == u"0") return u"Český dabing"_s;
    return word == u"1" ? u"Titulky"_s : u"Neuvedeno"_s;
}

void PridejRadek(const QString& Poradi, const QString& Nazev, const QString& Zanr, const QString& Jazyk,
                 const QString& KatCisl) {
    QString row = rowTemplate();
    fill(row, 0, {Poradi, Nazev, Zanr, Jazyk, KatCisl});
    HtmlTelo += codepage::toWindows1250(row);
}

void PridejDetail(const QString& Nazev, const QString& Zanr, const QString& Delka, const QString& Stat,
                  const QString& Rok, const QString& Jazyk, const QString& Obsah, const QString& Herci,
                  const QString& KatCisl, const QString& Obrazek) {
    QString film = filmTemplate();
    const QString title = Nazev + u"  ("_s + KatCisl + u')';
    fill(film, 1, {title, Zanr, Delka, Stat, Rok, Jazyk, Obsah, Herci});
    film.replace(u"%%%PIC%%%"_s, Obrazek.isEmpty() ? QString() : pictureTag(Obrazek));
    HtmlTelo += codepage::toWindows1250(film);
}

QString PripravNahled(qint32 PicID) {
    ado::Connection connection;
    ado::Recordset rows;
    skipFailure([&] { openPictureFile(connection); });
    const bool opened = skipFailure([&] {
        rows.Open(u"SELECT * FROM tPicture where PicID="_s + QString::number(PicID), connection, 1, 2, -1);
    });
    if (!opened) MsgBox(Err.Description());
    QString type;
    skipFailure([&] { type = text::lowerCase(rows.Fields(u"PicTyp").Value().toText()); });
    QString name;
    skipFailure(
        [&] { name = blob::BlobDoTisku(rows, u"PicDat", u"PicSize", type, PicID, blob::Group::preview); });
    return name;
}
