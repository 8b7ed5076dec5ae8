#pragma once

#include <QTextBrowser>

#include "toolkit/ChmFile.h"
#include "toolkit/HelpLook.h"

class QPagedPaintDevice;

/// Shows a page of a help file; it and all its resources are read from the file. It follows the widget's font
/// and palette.
class HelpPage final : public QTextBrowser {
    Q_OBJECT

 public:
    static constexpr int smallestZoom = 50;  ///< percent
    static constexpr int largestZoom = 300;  ///< percent

    explicit HelpPage(const ChmFile& file, QWidget* parent);

    /// Size of letters and pictures in percent of the usual one.
    int zoom() const noexcept { return zoom_; }
    /// Draws the page at another size, limited to the values above, and keeps the place.
    void setZoom(int percent);
    /// The next larger (positive) or smaller (negative) size of a fixed list.
    void zoomBy(int steps);

    /// The first character in view; 0 at the start of the page.
    int place() const;
    /// Scrolls until a character's line is the first in view; a place behind the end shows the end.
    void setPlace(int place);

    /// Marks the words of a query (see HelpSearch); none for an empty query.
    void mark(const QString& query);
    /// Scrolls to the first marked word, if there is one.
    void showFirstMark();

    /// Prints the page, at its usual size, dark on white, its pictures no wider than the paper.
    void printOn(QPagedPaintDevice& paper) const;

 protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    HelpLook look() const;
    /// The width that pictures may have without being cut, in pixels.
    qreal room() const;
    /// Reads and draws the page again and keeps the place.
    void redraw();

    const ChmFile& file_;
    int zoom_ = 100;
    qreal widest_ = 0;     // width of the page's widest picture as zoomed
    qreal drawnRoom_ = 0;  // for which its pictures have been drawn
    int wheel_ = 0;        // eighths of a degree not yet made into a step
};
