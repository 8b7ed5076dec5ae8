// Fields between markers, which come from the page itself, so that they are found often.

#include <QStringList>

#include "fuzzText.h"
#include "lookup/mCSFD.h"
#include "lookup/webText.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const QString all = fuzzText(data, size);
    const QStringList parts = all.split(u'\n');
    const csfd::Page page(all);
    require(page.upper().size() == all.size());
    const QString field = NajdiTextPolozky(page, parts.first().left(8), parts.last().left(8));
    require(!field.startsWith(u' ') && !field.contains(u'\n'));
    require(!NajdiURLPolozky(page, parts.first().left(8)).contains(u'/'));
    require(!csfd::detailKey(page).contains(u'"'));
    csfd::Origin origin;
    csfd::cutOrigin(all, origin);
    csfd::castOf(all);
    csfd::descriptionOf(all);
    OdebratTagy(all);
    UpravText(all);
    PREVOD(all);
    return 0;
}
