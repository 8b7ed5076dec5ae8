#include "toolkit/DownloadWindow.h"

#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "toolkit/appTitle.h"

using namespace Qt::StringLiterals;

DownloadWindow::DownloadWindow(const Download& download, QWidget* owner)
    : QDialog(owner), download_(download), received_(new QLabel(this)) {
    constexpr int width = 320;  // pixels
    setWindowTitle(appTitle());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);
    auto* host = new QLabel(u"Čeká se na server %1"_s.arg(download.host()), this);
    host->setTextFormat(Qt::PlainText);
    host->setWordWrap(true);
    auto* leave = new QPushButton(u"Storno"_s, this);
    // No default button: an Enter meant for the window behind must not cancel the download.
    leave->setAutoDefault(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(host);
    layout->addWidget(received_);
    layout->addWidget(leave, 0, Qt::AlignRight);
    setMinimumWidth(width);
    showReceived();

    constexpr int tickMilliseconds = 200;
    connect(&tick_, &QTimer::timeout, this, &DownloadWindow::showReceived);
    connect(leave, &QPushButton::clicked, this, &QDialog::reject);
    connect(&download, &Download::finished, this, &QDialog::accept);
    tick_.start(tickMilliseconds);
}

void DownloadWindow::showReceived() {
    const qint64 bytes = download_.received();
    received_->setText(bytes == 0 ? u"Zatím nepřišla žádná data."_s
                                  : u"Staženo: "_s + QLocale().formattedDataSize(bytes, 1));
}
