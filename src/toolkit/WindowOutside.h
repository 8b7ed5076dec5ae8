#pragma once

#include <QList>
#include <QPointer>
#include <QPrinterInfo>
#include <QWidget>

#include "platform/Outside.h"

/// The real implementation: Qt's message boxes and file dialogs, the web, the desktop's applications and
/// printers, the system clock.
class WindowOutside final : public Outside {
 public:
    WindowOutside();

    BoxAnswer messageBox(const QString& text, int style, const QString& title, QObject* owner) override;
    QString openFile(const FileDialogRequest& request, QObject* owner) override;
    QString saveFile(const FileDialogRequest& request, QObject* owner) override;
    bool download(const QString& url, const QString& path) override;
    bool openWithDesktop(const QString& target) override;
    QStringList printers() override;
    void setPrinter(const QString& name) override;
    void printPicture(const PicturePage& page) override;
    void printPages(const QString& title, const std::function<void(QPagedPaintDevice&)>& paint,
                    QObject* owner) override;
    QDateTime now() override;

 private:
    /// The visible window that a box or dialog of `owner` belongs to; without an owner the one that the user
    /// works in. Null when no window is visible.
    QWidget* windowOf(QObject* owner) const;
    /// The printer in use; a null one when there is none at all.
    QPrinterInfo chosenPrinter();

    QObject watch_;
    QList<QPointer<QWidget>> used_;  // windows that have been active, the last one in front
    QStringList listed_;             // printers that the user was offered last
    QString printer_;                // "" for the user's default
};
