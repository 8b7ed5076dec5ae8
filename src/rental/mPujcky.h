#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/ListEntry.h"

/// Loans in `tPujcky`. A loan is open while it has no return date; a film is on loan while it has an open
/// loan.
///
/// The customer number of a loan has two sources: lending from the main window stores the customer's `USID`,
/// lending in the rental window the number in the customer's personal code. They are equal unless another
/// code was typed. The list of films to return looks for the code, history and main window for the `USID`.

/// Lends a film to a customer number now. Neither is checked: a film on loan gets a second open loan.
/// @throws RuntimeError when the catalogue cannot be opened or written; nothing is stored then.
void PujcDVD(qint32 UID, qint32 DVDID);

/// Closes the first open loan of a film now, whoever holds it; does nothing when there is none. `UID` is
/// ignored.
/// @throws RuntimeError when the catalogue cannot be opened or written.
void VratDVD(qint32 UID, qint32 DVDID);

/// The films without an open loan, by Czech title, each with its `DVDID`. Rows that cannot be read are left
/// out.
std::vector<ListEntry> freeFilms();

/// The films with an open loan under a customer number, by Czech title, each with its `DVDID`. Rows that
/// cannot be read are left out.
/// @param code a personal code; surrounding blanks are ignored.
/// @return nullopt, without a query, when the code is no whole number. A number beyond 32 bits matches no
///         loan.
std::optional<std::vector<ListEntry>> filmsToReturn(const QString& code);

/// The closed loans of a customer by `USID`, last returned first: one line with title and return date and
/// time each, ended by CR LF. Rows that cannot be read are left out, as are deleted films.
QString history(qint32 USID);

/// All customers by name, each with its `USID`. Rows that cannot be read are left out.
std::vector<ListEntry> customersByName();

/// The query for all open loans with an existing film and customer.
/// @param condition appended to the WHERE clause, such as " and tDVD.DVDID=5".
QString openLoansSql(const QString& condition = {});
