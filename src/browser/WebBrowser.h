#pragma once

#include <QPointer>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <memory>

#include "toolkit/Browser.h"

class QWebEngineLoadingInfo;

/// The browser control, based on Qt WebEngine. Its profile keeps nothing on disk.
class WebBrowser final : public QObject, public Browser {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WebBrowser)

 public:
    WebBrowser(QWidget& parent, Events events);
    ~WebBrowser() override;

    QWidget& widget() override { return *view_; }
    void Navigate(const QString& urlOrPath) override;
    void Stop() override;
    QString innerHTML() const override { return body_; }

 private:
    class Page;

    void loadingChanged(const QWebEngineLoadingInfo& info);
    void takeBody(const QString& url);

    Events events_;
    // In this order: a page must not outlive its view or its profile.
    std::unique_ptr<QWebEngineProfile> profile_;
    std::unique_ptr<Page> page_;
    QPointer<QWebEngineView> view_;
    QString body_;
};
