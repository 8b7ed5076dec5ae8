// The block of further titles, and a title with years in brackets.

#include "fuzzText.h"
#include "lookup/mCSFD.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const QString block = fuzzText(data, size);
    const csfd::OtherTitles found = csfd::ZpracujDalsiNazvy(block);
    require(found.any || found.titles.empty());
    for (const QString& title : found.titles)
        require(!title.contains(u"</"));
    require(csfd::titleWithoutYear(block).size() <= block.size());
    return 0;
}
