#include "toolkit/DownloadWindow.h"

#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "toolkit/appTitle.h"
#include "toolkit/twips.h"

using namespace Qt::StringLiterals;

DownloadWindow::DownloadWindow(const Download& download, QWidget* owner)
    : QDialog(owner), download_(download), received_(new QLabel(this)) {
    const int width = twips::scaled(320);
    setWindowTitle(appTitle());
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);
    auto* host = new QLabel(this);
    host->setTextFormat(Qt::PlainText);
    // A host may have 253 characters; its end says whose it is.
    host->setText(u"Čeká se na server "_s +
                  host->fontMetrics().elidedText(download.host(), Qt::ElideLeft, 2 * width));
    auto* leave = new QPushButton(u"Storno"_s, this);
    // No default button and no focus on it: a key meant for the window behind must not cancel the download.
    leave->setAutoDefault(false);
    setFocusPolicy(Qt::StrongFocus);
    setFocus();
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
    constexpr qint64 kilobyte = 1024;
    received_->setText(bytes == 0 ? u"Zatím nepřišla žádná data."_s
                                  : u"Staženo: %1 kB"_s.arg(
                                        QLocale(QLocale::Czech).toString((bytes + kilobyte - 1) / kilobyte)));
}
