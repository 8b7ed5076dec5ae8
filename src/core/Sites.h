#pragma once

#include <QString>

/// Root addresses of the web sites that the program asks: scheme and host, with no slash behind them.
struct Sites {
    QString filmDb = {};   ///< the film database
    QString filmDb2 = {};  ///< the second film database, asked for original titles
    QString shop = {};     ///< the disc shop
    QString cover = {};    ///< the cover archive
    QString update = {};   ///< where new versions of the program are

    /// Those that the program was built with.
    static Sites compiledIn();
};
