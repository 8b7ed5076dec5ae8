#include "core/stahniSoubor.h"

#include "platform/Outside.h"

bool StahniSoubor(const QString& url, const QString& path) {
    return Outside::current().download(url, path);
}
