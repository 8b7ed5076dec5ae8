#include "core/Sites.h"

Sites Sites::compiledIn() {
    return {.filmDb = QStringLiteral(KALVERA_FILM_DB_ROOT),
            .filmDb2 = QStringLiteral(KALVERA_FILM_DB2_ROOT),
            .shop = QStringLiteral(KALVERA_SHOP_ROOT),
            .cover = QStringLiteral(KALVERA_COVER_ROOT),
            .update = QStringLiteral(KALVERA_UPDATE_ROOT)};
}
