#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

/// A web browser control. Its engine is large, so it lives in a plugin that is loaded with the first control.
class Browser {
 public:
    /// Callbacks of the control. They are called from the event loop, so an exception ends the program as
    /// usual; only `BeforeNavigate2` must not throw.
    struct Events {
        /// An address is about to be requested.
        std::function<void(const QString& url)> BeforeNavigate2;
        /// A page has finished loading; innerHTML returns its body from now on.
        std::function<void(const QString& url)> DocumentComplete;
        /// Loading progress of a page.
        std::function<void(int progress, int maximum)> ProgressChange;
    };

    Browser() = default;
    virtual ~Browser() = default;
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

    /// The control, a child of the window it was created for.
    virtual QWidget& widget() = 0;
    /// Starts loading an address or a local file.
    virtual void Navigate(const QString& urlOrPath) = 0;
    /// Stops loading.
    virtual void Stop() = 0;
    /// The body of the page that finished last: tag names in upper case, attributes in document order and
    /// unquoted where they have only letters, digits and `- . _ : / # %`, CSS property names in upper case,
    /// text escaped.
    virtual QString innerHTML() const = 0;
};

/// The interface of the plugin.
class BrowserFactory {
 public:
    BrowserFactory() = default;
    virtual ~BrowserFactory() = default;
    BrowserFactory(const BrowserFactory&) = delete;
    BrowserFactory& operator=(const BrowserFactory&) = delete;

    virtual std::unique_ptr<Browser> create(QWidget& parent, Browser::Events events) = 0;
};

/// The number is raised with every change of the two classes: a program that still runs after an upgrade
/// finds the plugin of the newer version, and refuses one of another number.
#define BrowserFactoryId "cz.kalvera.BrowserFactory/1"
Q_DECLARE_INTERFACE(BrowserFactory, BrowserFactoryId)

/// The browser plugin, loaded by the first call.
/// @throws RuntimeError 429, with a Czech description, when it cannot be loaded.
BrowserFactory& browserFactory();
