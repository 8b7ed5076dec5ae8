#include "services/novaVerze.h"

#include <algorithm>

#include "core/mVerze.h"
#include "core/stahniSoubor.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

/// The first field of a comma-separated line.
QString firstField(const QString& content) {
    if (content.isEmpty()) throw RuntimeError(errors::endOfFile);
    const auto lineEnd = [](QChar c) { return c == u'\r' || c == u'\n'; };
    const auto end = std::find_if(content.begin(), content.end(), lineEnd);
    const QString line = text::trim(content.first(end - content.begin()));
    return line.startsWith(u'"') ? line.section(u'"', 1, 1) : text::trim(line.section(u',', 0, 0));
}

}  // namespace

QString newVersionAddress(const Sites& sites) {
    return sites.update + u"/podpora/files/setupupgrade.exe"_s;
}

bool isNewer(const QString& offered, const std::array<int, 3>& own) {
    const QStringList parts = text::split(offered, u'-');
    const auto number = [&parts](qsizetype at) {
        if (at >= parts.size()) throw RuntimeError(errors::subscriptOutOfRange);
        return text::toNumber(parts[at]);
    };
    const auto [major, minor, revision] = own;
    if (number(0) > major) return true;
    if (number(1) > minor && number(0) >= major) return true;
    return number(2) > revision && number(1) >= minor && number(0) >= major;
}

bool JeNovaVerze(const Sites& sites) {
    const QString file = paths::inProgramFolder(u"\\data\\dvdver.inf");
    if (!StahniSoubor(sites.update + u"/podpora/files/dvdkalver.asp"_s, file)) return false;
    return isNewer(firstField(codepage::fromWindows1250(files::readAll(file))),
                   {verze::major, verze::minor, verze::revision});
}
