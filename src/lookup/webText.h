#pragma once

#include <QString>

/// Text conversions for web addresses and pages.

/// A search term for a web address: characters whose Windows-1250 code is 123 or more are percent-encoded,
/// blanks become "+", all others stay, even those with a meaning in an address.
QString UpravText(const QString& term);

/// Removes the few tags and decodes the few entities that the film database uses in a field. `<br>` becomes
/// CR LF.
QString OdebratTagy(const QString& text);

/// Replaces š, ž, Š and Ž by the Windows-1250 characters at their ISO 8859-2 codes.
QString PREVOD(const QString& text);
