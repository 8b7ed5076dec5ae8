#pragma once

#include <QGuiApplication>

/// The pointer tells that the program is busy, for as long as this lives.
class WaitCursor final {
 public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};
