#include "toolkit/Browser.h"

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QPluginLoader>

#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

/// Searched beside the program and in its library folder; else the name alone, for Qt's own plugin search.
QString pluginFile() {
    QString name = u"kalvera_browser"_s;
    const QDir executable(QCoreApplication::applicationDirPath());
    for (const QString& folder : {u"."_s, u"../lib/kalvera"_s}) {
        for (const QString& file :
             {u"lib"_s + name + u".so"_s, u"lib"_s + name + u".dylib"_s, name + u".dll"_s}) {
            QString path = executable.filePath(folder + u'/' + file);
            if (QFile::exists(path)) return path;
        }
    }
    return name;
}

}  // namespace

BrowserFactory& browserFactory() {
    static QPluginLoader loader;
    // The engine tells its setup on standard error otherwise.
    QLoggingCategory::setFilterRules(u"qt.webenginecontext.info=false\nqt.webenginecontext.debug=false"_s);
    // Required by the engine. Set before QApplication it would create a graphics context at every start.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    if (!loader.isLoaded()) loader.setFileName(pluginFile());
    auto* factory = qobject_cast<BrowserFactory*>(loader.instance());
    if (factory == nullptr) {
        qWarning("%s: %s", qPrintable(loader.fileName()), qPrintable(loader.errorString()));
        throw RuntimeError(errors::cannotCreateObject);
    }
    return *factory;
}
