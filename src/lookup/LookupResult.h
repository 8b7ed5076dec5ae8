#pragma once

#include <QString>

/// What a lookup hands to the film editor.
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
    bool withPicture;     ///< whether the picture is to go over
    QString picturePath;  ///< its local file; "" when there is none
};
