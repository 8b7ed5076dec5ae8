#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/ListEntry.h"

/// The rules of the loans in `tPujcky`. Whether a film is lent is worked out from its rows each time: a row
/// is open while it has no date of return.
///
/// The customer number of a loan has two sources: who lends from the main window stores the customer's
/// `USID`, who lends in bulk stores the number in the customer's personal code. The two are the same until a
/// code of another number is typed. From then on the list of films to return knows the second kind only,
/// history and main window the first.

/// Lends a film to a customer number at the present moment. Neither is tested: a film that is out gets a
/// second open loan.
/// @throws RuntimeError when the catalogue cannot be opened or written; nothing is stored then.
void PujcDVD(qint32 UID, qint32 DVDID);

/// Closes the first open loan of a film at the present moment, whoever holds it; does nothing when there is
/// none. `UID` is not looked at.
/// @throws RuntimeError when the catalogue cannot be opened or written.
void VratDVD(qint32 UID, qint32 DVDID);

/// The films without an open loan, by Czech title, each with its `DVDID`. Whatever cannot be read is left
/// out.
std::vector<ListEntry> freeFilms();

/// The films with an open loan under a customer number, by Czech title, each with its `DVDID`. Whatever
/// cannot be read is left out.
/// @param code a personal code. Blanks around the number do not matter.
/// @return nothing, without a look at the database, when the code is no whole number. One longer than 32 bits
///         meets no loan.
std::optional<std::vector<ListEntry>> filmsToReturn(const QString& code);

/// The closed loans of a customer by `USID`, the one returned last first: a line with title and moment of
/// return for each, ended by CR LF. Whatever cannot be read is left out, as are films deleted since.
QString history(qint32 USID);

/// All customers by name, each with its `USID`. Whatever cannot be read is left out.
std::vector<ListEntry> customersByName();

/// The query for all open loans that meet both a film and a customer.
/// @param condition follows the one it has, such as " and tDVD.DVDID=5".
QString openLoansSql(const QString& condition = {});
