#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>
#include <utility>

#include "toolkit/Browser.h"

/// A browser without an engine: it goes nowhere, and the test raises its events.
struct FakeBrowser final : Browser {
    FakeBrowser(QWidget& parent, Events raised) : events(std::move(raised)), place(new QWidget(&parent)) {
        place->setFocusPolicy(Qt::StrongFocus);
    }
    QWidget& widget() override { return *place; }
    void Navigate(const QString& urlOrPath) override { visited += urlOrPath; }
    void Stop() override {
        ++stops;
        stopped();
    }
    QString innerHTML() const override { return body; }

    Events events;
    QStringList visited;
    QString body;
    int stops = 0;
    std::function<void()> stopped = [] {};
    QWidget* place;  // its parent's
};

/// Makes them.
struct FakeBrowsers final : BrowserFactory {
    std::unique_ptr<Browser> create(QWidget& parent, Browser::Events events) override {
        auto browser = std::make_unique<FakeBrowser>(parent, std::move(events));
        made += browser.get();
        return browser;
    }

    QList<FakeBrowser*> made;  ///< in order; each lives as long as its window
};
