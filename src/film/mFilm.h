#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// Conversions between the film editor's controls and the columns of `tDVD`.
namespace film {

/// State of a check box: 1 checked, 0 unchecked, 2 greyed.
using BoxValue = int;

/// One token for each box, "A" for the value 1 and "N" for any other, separated by "|".
QString ZapisChk(const std::vector<BoxValue>& boxes);

/// Sets each box that has a token: 1 for exactly "A", else 0. Boxes beyond the last token keep their value;
/// surplus tokens are ignored. An empty text changes no box.
void NactiChk(std::vector<BoxValue>& boxes, const QString& tokens);

/// The highest index of the options that are selected; 0 when none is.
qint32 VratJazyk(const std::vector<bool>& options);

/// Index of the option for a stored value.
/// @throws RuntimeError 340 when there is no such option.
int NastavJazyk(qint32 jazyk, int options);

/// The length of a film as stored. Up to 3 characters are kept as they are. From a longer text every blank,
/// then every "min", then every "." is removed; a result that is not numeric becomes "0".
QString cleanLength(const QString& length);

/// The director as stored: the first 35 characters.
QString storedDirector(const QString& director);

/// The chosen genres joined by ", ". A single genre of one letter keeps a leading separator.
QString genreText(const QStringList& chosen);

/// The country from a lookup, shortened. In a text of more than 24 characters every "Spojené království"
/// becomes "Eng"; if it still has more than 24, it is cut to 23.
QString shortCountry(const QString& country);

}  // namespace film
