#pragma once

#include <QDialog>
#include <QTimer>

#include "platform/download.h"

class QLabel;

/// Shows the progress of a slow download: the server and the bytes received, with a button to cancel. It
/// closes by itself when the download ends.
class DownloadWindow final : public QDialog {
    Q_OBJECT

 public:
    /// @param owner the window that asked for the download; may be null.
    DownloadWindow(const Download& download, QWidget* owner);

 private:
    void showReceived();

    const Download& download_;
    QLabel* received_;
    QTimer tick_;
};
