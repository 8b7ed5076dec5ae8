#include "lookup/mModInetPic.h"

#include "core/stahniSoubor.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

namespace {

QString fetchPicture(const QString& url, const QString& address,
                     const std::function<void(const QString& path)>& show) {
    constexpr qsizetype suffix = 3;
    QString path = paths::inProgramFolder(QString(u"\\data\\webnahl."_s + address.right(suffix)));
    if (!StahniSoubor(url, path)) return {};
    show(path);
    return path;
}

}  // namespace

QString NactiWebObrazek(const QString& url, const std::function<void(const QString& path)>& show) {
    return fetchPicture(url, url, show);
}

QString NactiObrazekObchodu(const QString& shopRoot, const QString& address,
                            const std::function<void(const QString& path)>& show) {
    return fetchPicture(shopRoot + u'/' + address, address, show);
}
