#pragma once

#include <QByteArray>
#include <QString>

#include "platform/DbValue.h"

/// Building blocks of printed film lists: HTML templates in Windows-1250, and the preview files. Film texts
/// are inserted unescaped, so markup in them is markup in the list.

/// The rows of the current list in Windows-1250. Shared by all lists, including a nested one.
extern QByteArray HtmlTelo;

/// Head and end of a list, in Windows-1250.
QByteArray hlavickaSeznamu();
QByteArray hlavickaPodrobneho();
QByteArray konecSeznamu();

/// Printed text for a value of `tDVD.Jazyk`: 0 "Český dabing", 1 "Titulky" (as number or text), anything else
/// "Neuvedeno".
QString GetJazyk(const DbValue& Jazyk);

/// Adds a film's row to a simple list. Placeholders are replaced one after another in the whole row, also
/// where a film's text contains one.
/// @param Poradi the row number, which the template does not show.
void PridejRadek(const QString& Poradi, const QString& Nazev, const QString& Zanr, const QString& Jazyk,
                 const QString& KatCisl);

/// Adds a film's block to the detailed list, in the same way.
/// @param Obrazek the preview's file name without folder; "" for none.
void PridejDetail(const QString& Nazev, const QString& Zanr, const QString& Delka, const QString& Stat,
                  const QString& Rok, const QString& Jazyk, const QString& Obsah, const QString& Herci,
                  const QString& KatCisl, const QString& Obrazek);

/// Writes a preview to `\data\n` plus its key, "." and its type in lower case, replacing an existing file.
/// Failures are skipped; a failure to open is shown in a box.
/// @return the file name without folder; "" when there is no such picture.
QString PripravNahled(qint32 PicID);
