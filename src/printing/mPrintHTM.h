#pragma once

#include <QByteArray>
#include <QString>

#include "platform/DbValue.h"

/// What printed film lists are made of: HTML in Windows-1250, whose templates stand here, and the previews
/// beside it. A film's text goes in as it stands: markup in it is markup in the list.

/// The rows of the list being made, as bytes of the file. It is shared by all lists, also by one that is made
/// while another one is.
extern QByteArray HtmlTelo;

/// What a list begins and ends with, as bytes of the file.
QByteArray hlavickaSeznamu();
QByteArray hlavickaPodrobneho();
QByteArray konecSeznamu();

/// The printed word for a value of `tDVD.Jazyk`: 0 "Český dabing", 1 "Titulky" (as number or text), any other
/// and Null "Neuvedeno".
QString GetJazyk(const DbValue& Jazyk);

/// Adds the row of a film to a simple list. Placeholders are replaced one after the other in the whole row,
/// so one that stands in a film's text is replaced too.
/// @param Poradi the row's running number, which the template does not show.
void PridejRadek(const QString& Poradi, const QString& Nazev, const QString& Zanr, const QString& Jazyk,
                 const QString& KatCisl);

/// Adds the block of a film to the detailed list, in the same way.
/// @param Obrazek the preview's file name without folder; "" for none.
void PridejDetail(const QString& Nazev, const QString& Zanr, const QString& Delka, const QString& Stat,
                  const QString& Rok, const QString& Jazyk, const QString& Obsah, const QString& Herci,
                  const QString& KatCisl, const QString& Obrazek);

/// Takes a preview out of the picture file to `\data\n`, its key, "." and its type in small letters, in place
/// of an older file of that name. What fails is skipped; a failure to open is told in a box.
/// @return the name without folder; "" when there is no such picture.
QString PripravNahled(qint32 PicID);
