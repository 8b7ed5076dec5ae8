#pragma once

#include <QString>

/// Root addresses of the web sites that the program queries: scheme and host, no trailing slash.
struct Sites {
    QString filmDb = {};   ///< the film database
    QString filmDb2 = {};  ///< the second film database, asked for original titles
    QString shop = {};     ///< the disc shop
    QString cover = {};    ///< the cover archive
    QString update = {};   ///< the host of new versions

    /// The addresses compiled into the program.
    static Sites compiledIn();
};
