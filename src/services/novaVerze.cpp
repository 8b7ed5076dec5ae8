#include "services/novaVerze.h"

#include "core/mVerze.h"
#include "lookup/mModInetPic.h"
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
    const QString line = content.trimmed();
    if (line.startsWith(u'"')) return line.sliced(1).section(u'"', 0, 0);
    qsizetype end = 0;
    while (end < line.size() && line[end] != u',' && line[end] != u'\r' && line[end] != u'\n')
        ++end;
    return line.first(end);
}

}  // namespace

QString newVersionAddress(const Sites& sites) {
    return sites.update + u"/podpora/files/setupupgrade.exe"_s;
}

bool isNewer(const QString& version) {
    const QStringList parts = text::split(version, u'-');
    const auto number = [&parts](qsizetype at) {
        if (at >= parts.size()) throw RuntimeError(errors::subscriptOutOfRange);
        return text::toLong(parts[at]);
    };
    if (number(0) > verze::major) return true;
    if (number(1) > verze::minor && number(0) >= verze::major) return true;
    return number(2) > verze::revision && number(1) >= verze::minor && number(0) >= verze::major;
}

bool JeNovaVerze(const Sites& sites) {
    const QString file = paths::inProgramFolder(u"\\data\\dvdver.inf");
    if (!StahniSoubor(sites.update + u"/podpora/files/dvdkalver.asp"_s, file)) return false;
    return isNewer(firstField(codepage::fromWindows1250(files::readAll(file))));
}
