// The list of films on a search page: every path is free of quotes, and what is left of the page is a part of
// it.

#include "fuzzText.h"
#include "lookup/mCSFD.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const QString page = fuzzText(data, size);
    QString rest = page;
    for (const csfd::FoundFilm& film : csfd::NactiSeznamFilmu(rest))
        require(!film.path.contains(u'"'));
    require(page.contains(rest));
    return 0;
}
