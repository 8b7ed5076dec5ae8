#pragma once

#include <QHash>
#include <QList>
#include <QStringList>

#include "platform/Outside.h"

/// A world that records what it is asked and answers from lists. In use as long as it lives.
class ScriptedOutside final : public Outside {
 public:
    struct Box {
        QString text;
        int style;
        QString title;

        friend bool operator==(const Box&, const Box&) = default;
    };

    BoxAnswer messageBox(const QString& text, int style, const QString& title, QObject* owner) override;
    QString openFile(const FileDialogRequest& request, QObject* owner) override;
    QString saveFile(const FileDialogRequest& request, QObject* owner) override;
    bool download(const QString& url, const QString& path) override;
    bool openWithDesktop(const QString& target) override;
    QStringList printers() override { return printerNames; }
    void setPrinter(const QString& name) override;
    void printPicture(const PicturePage& page) override;
    QDateTime now() override { return moment; }

    /// The boxes shown since the last call, a line for each: text, style and title joined by "|".
    QString told();

    QList<Box> boxes;
    QList<FileDialogRequest> fileDialogs;
    QStringList downloads;

    /// Taken from the front; a question without an answer here is answered with Yes.
    QList<BoxAnswer> answers;
    /// Taken from the front; a dialog without a file here is cancelled.
    QStringList files;
    /// What each address holds; any other address fails.
    QHash<QString, QByteArray> pages;
    /// Downloads go to the real web instead.
    bool online = false;
    /// What was handed to the desktop.
    QStringList opened;
    bool desktopOpens = true;
    /// The printers there are; the first one is the current one until another one is chosen.
    QStringList printerNames;
    /// Each page printed, with the printer it was printed on.
    QList<std::pair<QString, PicturePage>> printed;
    QDateTime moment{QDate(2026, 3, 9), QTime(8, 5, 3)};

 private:
    QString printer_;
};
