#include "browser/WebBrowser.h"

#include <QFile>
#include <QTimer>
#include <QUrl>
#include <QWebEngineLoadingInfo>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineSettings>

using namespace Qt::StringLiterals;

namespace {

QString bodyScript() {
    QFile file(u":/browser/innerHtml.js"_s);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

/// Reports where it navigates to and suppresses its scripts' message boxes.
class WebBrowser::Page final : public QWebEnginePage {
 public:
    Page(QWebEngineProfile* profile, const Events& events) : QWebEnginePage(profile), events_(events) {}

 protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType /*type*/, bool isMainFrame) override {
        if (isMainFrame) events_.BeforeNavigate2(url.toString());
        return true;
    }
    void javaScriptAlert(const QUrl& /*origin*/, const QString& /*text*/) override {}
    bool javaScriptConfirm(const QUrl& /*origin*/, const QString& /*text*/) override { return false; }
    bool javaScriptPrompt(const QUrl& /*origin*/, const QString& /*text*/, const QString& /*preset*/,
                          QString* /*result*/) override {
        return false;
    }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel /*level*/, const QString& /*message*/,
                                  int /*line*/, const QString& /*source*/) override {}

 private:
    const Events& events_;
};

WebBrowser::WebBrowser(QWidget& parent, Events events)
    : events_(std::move(events)),
      profile_(std::make_unique<QWebEngineProfile>()),
      page_(std::make_unique<Page>(profile_.get(), events_)),
      view_(std::make_unique<QWebEngineView>(&parent).release()) {
    view_->setPage(page_.get());
    view_->setContextMenuPolicy(Qt::NoContextMenu);
    view_->setAcceptDrops(false);
    const auto set = [this](QWebEngineSettings::WebAttribute attribute, bool on) {
        page_->settings()->setAttribute(attribute, on);
    };
    // The search form is a local page with remote results. It contains a title, which may be anything, so it
    // must not reach other local files.
    set(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    set(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    // Pages are parsed, not displayed, and must not take the keyboard focus.
    set(QWebEngineSettings::FocusOnNavigationEnabled, false);
    set(QWebEngineSettings::AutoLoadImages, false);
    set(QWebEngineSettings::AutoLoadIconsForPage, false);
    connect(page_.get(), &QWebEnginePage::loadingChanged, this, &WebBrowser::loadingChanged);
    // Queued, as exceptions must not pass through the engine.
    connect(
        page_.get(), &QWebEnginePage::loadProgress, this,
        [this](int percent) { events_.ProgressChange(percent, 100); }, Qt::QueuedConnection);
}

WebBrowser::~WebBrowser() {
    page_->disconnect(this);
    delete view_;
    page_.reset();
}

void WebBrowser::Navigate(const QString& urlOrPath) {
    const bool file = !urlOrPath.contains(u"://"_s);
    page_->load(file ? QUrl::fromLocalFile(urlOrPath) : QUrl(urlOrPath));
}

void WebBrowser::Stop() {
    page_->triggerAction(QWebEnginePage::Stop);
}

void WebBrowser::loadingChanged(const QWebEngineLoadingInfo& info) {
    // The site's pages count whatever their HTTP status; the engine's own error pages do not.
    const bool answered = info.status() == QWebEngineLoadingInfo::LoadSucceededStatus ||
                          (info.status() == QWebEngineLoadingInfo::LoadFailedStatus &&
                           info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain);
    if (answered) takeBody(info.url().toString());
}

void WebBrowser::takeBody(const QString& url) {
    static const QString script = bodyScript();
    // In an isolated world, where the page's scripts cannot have changed anything.
    page_->runJavaScript(script, QWebEngineScript::ApplicationWorld,
                         [self = QPointer<WebBrowser>(this), url](const QVariant& body) {
                             if (self == nullptr || !body.isValid()) return;
                             QTimer::singleShot(0, self, [self, url, html = body.toString()] {
                                 self->body_ = html;
                                 self->events_.DocumentComplete(url);
                             });
                         });
}
