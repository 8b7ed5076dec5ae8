#pragma once

#include <QString>

/// The result of a lookup, for the film editor.
struct LookupResult {
    QString czechTitle;
    QString originalTitle;
    QString genre;
    QString country;
    QString year;
    QString length;
    QString director;
    QString cast;
    QString description;
    bool withPicture;     ///< whether to take over the picture as well
    QString picturePath;  ///< its local file; "" when there is none
};
