// HTML to text: no page makes it fail, and it gives at most twice the length (a tag of three letters becomes
// two line breaks).

#include "fuzzText.h"
#include "lookup/Module1.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const QString page = fuzzText(data, size);
    require(HtmlNaText(page).size() <= 2 * page.size());
    return 0;
}
