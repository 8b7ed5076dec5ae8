#pragma once

#include <QString>

/// The fields of a film that a lookup fills.
enum class LookupField {
    czechTitle,
    originalTitle,
    genre,
    country,
    year,
    length,
    director,
    cast,
    description,
    picture
};

/// The window that shows what is read from a film's pages.
class LookupWindow {
 public:
    LookupWindow() = default;
    virtual ~LookupWindow() = default;
    LookupWindow(const LookupWindow&) = delete;
    LookupWindow& operator=(const LookupWindow&) = delete;

    virtual QString text(LookupField field) const = 0;
    virtual void setText(LookupField field, const QString& text) = 0;
    /// Shows a picture file. @throws RuntimeError when it is not a picture.
    virtual void showPicture(const QString& path) = 0;
    /// Shows that pages are being read.
    virtual void showWait() = 0;
    virtual void hideWait() = 0;
    /// Processes pending window events.
    virtual void yield() = 0;
};
