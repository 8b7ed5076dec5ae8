// The plugin with the browser control. The program loads it when the first window with a browser opens.

#include <QCoreApplication>
#include <QObject>
#include <QOpenGLContext>
#include <QtPlugin>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "browser/WebBrowser.h"

// Qt calls this itself if the attribute for shared contexts is set before the application object is created.
// It is exported but declared in no public header.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);
QT_END_NAMESPACE

namespace {

/// The OpenGL context shared by the views. Created with the first view, as that is slow.
void makeSharedContext() {
    if (QOpenGLContext::globalShareContext() != nullptr) return;
    auto context = std::make_unique<QOpenGLContext>();
    if (!context->create()) return;
    context->setParent(QCoreApplication::instance());
    qt_gl_set_global_share_context(context.release());
}

}  // namespace

class BrowserPlugin final : public QObject, public BrowserFactory {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID BrowserFactoryId)
    Q_INTERFACES(BrowserFactory)

 public:
    std::unique_ptr<Browser> create(QWidget& parent, Browser::Events events) override {
#ifdef Q_OS_UNIX
        // The engine's sandbox does not start for root, and the engine not without it unless told so.
        if (geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
#endif
        makeSharedContext();
        return std::make_unique<WebBrowser>(parent, std::move(events));
    }
};

#include "BrowserPlugin.moc"
