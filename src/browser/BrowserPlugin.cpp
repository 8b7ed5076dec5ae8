// The plugin with the browser control. The program loads it when the first window with a browser opens.

#include <QObject>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "browser/WebBrowser.h"

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
        return std::make_unique<WebBrowser>(parent, std::move(events));
    }
};

#include "BrowserPlugin.moc"
