#pragma once

#include <QString>

/// Small conversions of texts on their way to and from web sites.

/// A search term as it stands in a search address: characters whose Windows-1250 code is 123 or more as "%"
/// and that code, blanks as "+", all others as they are, also those that mean something in an address.
QString UpravText(const QString& term);

/// Takes the few tags and entities out of a cut field that the film database uses in it. `<br>` becomes CR
/// LF.
QString OdebratTagy(const QString& text);

/// The letters š, ž, Š and Ž as the characters that stand at their ISO 8859-2 codes in Windows-1250.
QString PREVOD(const QString& text);
