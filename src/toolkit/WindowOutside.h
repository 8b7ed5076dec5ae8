#pragma once

#include "platform/Outside.h"

/// The real world: Qt's message boxes, the desktop's file dialogs, the web, the desktop's
/// programs and printers, the machine's clock.
class WindowOutside final : public Outside {
 public:
    BoxAnswer messageBox(const QString& text, int style, const QString& title, QObject* owner) override;
    QString openFile(const FileDialogRequest& request, QObject* owner) override;
    QString saveFile(const FileDialogRequest& request, QObject* owner) override;
    bool download(const QString& url, const QString& path) override;
    bool openWithDesktop(const QString& target) override;
    QStringList printers() override;
    void setPrinter(const QString& name) override;
    void printPicture(const PicturePage& page) override;
    QDateTime now() override;

 private:
    QString printer_;  // "" for the user's default
};
