#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// What the film editor does to texts and choices on their way between its controls and the columns of
/// `tDVD`.
namespace film {

/// A check box as the editor stores it: 1 ticked, 0 not, 2 neither.
using BoxValue = int;

/// One token for each box, "A" for the value 1 and "N" for any other, separated by "|".
QString ZapisChk(const std::vector<BoxValue>& boxes);

/// Sets each box that the text has a token for: 1 for exactly "A", else 0. Boxes beyond the last token keep
/// their value; tokens beyond the last box have no effect. An empty text changes no box.
void NactiChk(std::vector<BoxValue>& boxes, const QString& tokens);

/// The highest index of the options that are selected; 0 when none is.
qint32 VratJazyk(const std::vector<bool>& options);

/// Index of the option for a stored value.
/// @throws RuntimeError 340 when there is no such option.
int NastavJazyk(qint32 jazyk, int options);

/// The length of a film as it is stored. Up to 3 characters it stays as it stands. A longer text loses every
/// blank, then every "min", then every "."; what is left and not numeric becomes "0".
QString cleanLength(const QString& length);

/// The director as it is stored: the first 35 characters.
QString storedDirector(const QString& director);

/// The text for the chosen genres: joined by ", ". A single genre of one letter keeps the separator in front.
QString genreText(const QStringList& chosen);

/// The country as a lookup hands it over. A text of more than 24 characters has every "Spojené království"
/// replaced by "Eng", and when it still has more than 24, only its first 23 remain.
QString shortCountry(const QString& country);

}  // namespace film
