#pragma once

#include <QString>
#include <QWidget>
#include <QtPlugin>
#include <functional>
#include <memory>

/// A web browser control. The engine behind it is large, so it lives in a plugin that is loaded with the
/// first control; this is all that the program knows of it.
class Browser {
 public:
    /// What the control tells. Each is called from the event loop, where what it throws ends the program as
    /// anywhere else, except `BeforeNavigate2`, which must not throw.
    struct Events {
        /// The address about to be loaded, before the request goes out.
        std::function<void(const QString& url)> BeforeNavigate2;
        /// A page that has finished loading. Its body can be asked for from now on.
        std::function<void(const QString& url)> DocumentComplete;
        /// How much of a page has been loaded, and of how much.
        std::function<void(int progress, int maximum)> ProgressChange;
    };

    Browser() = default;
    virtual ~Browser() = default;
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

    /// The control as a child of the window that it was made for.
    virtual QWidget& widget() = 0;
    /// Starts loading an address or a local file.
    virtual void Navigate(const QString& urlOrPath) = 0;
    /// Ends what the browser is doing.
    virtual void Stop() = 0;
    /// The body of the page that has finished last: tag names in upper case, attributes in document order and
    /// bare where they have only letters, digits and `- . _ : / # %`, property names of styles in upper case,
    /// text escaped.
    virtual QString innerHTML() const = 0;
};

/// What the plugin makes.
class BrowserFactory {
 public:
    BrowserFactory() = default;
    virtual ~BrowserFactory() = default;
    BrowserFactory(const BrowserFactory&) = delete;
    BrowserFactory& operator=(const BrowserFactory&) = delete;

    virtual std::unique_ptr<Browser> create(QWidget& parent, Browser::Events events) = 0;
};

#define BrowserFactoryId "cz.kalvera.BrowserFactory/1"
Q_DECLARE_INTERFACE(BrowserFactory, BrowserFactoryId)

/// The browser plugin, loaded when this is first called.
/// @throws RuntimeError 429, with a Czech description, when it cannot be loaded.
BrowserFactory& browserFactory();
