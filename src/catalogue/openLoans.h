#pragma once

#include <QString>

/// The query for all open loans that meet both a film and a customer.
/// @param condition follows the one it has, such as " and tDVD.DVDID=5".
inline QString openLoansSql(const QString& condition = {}) {
    return QStringLiteral(
               "SELECT tDVD.DVDID, tPujcky.P_UID, tPujcky.P_DVDID, tPujcky.PDatPujcky,tPujcky.PDatVraceni, "
               "tUser.USID, tUser.USNAME FROM tUser INNER JOIN (tDVD INNER JOIN tPujcky ON tDVD.DVDID = "
               "tPujcky.P_DVDID) ON tUser.USID = tPujcky.P_UID WHERE (((tPujcky.PDatVraceni) Is Null))") +
           condition + QLatin1Char(';');
}
