#include "lookup/mModInetPic.h"

#include "platform/Outside.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

bool StahniSoubor(const QString& url, const QString& path) {
    return Outside::current().download(url, path);
}

QString NactiWebObrazek(const QString& url, const std::function<void(const QString& path)>& show) {
    constexpr qsizetype suffix = 3;
    const QString path = paths::inProgramFolder(QString(u"\\data\\webnahl."_s + url.right(suffix)));
    if (!StahniSoubor(url, path)) return {};
    show(path);
    return path;
}
