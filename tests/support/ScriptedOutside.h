#pragma once

#include <QFile>
#include <QHash>
#include <QStringList>
#include <functional>
#include <utility>

#include "platform/Outside.h"
#include "platform/download.h"
#include "platform/errors.h"

/// Records what the program asks of the outside world and answers from lists.
class ScriptedOutside final : public Outside {
 public:
    struct Box {
        QString text;
        int style;
        QString title;
        const QObject* owner;
    };

    BoxAnswer messageBox(const QString& text, int style, const QString& title, QObject* owner) override {
        boxes.append({text, style, title, owner});
        reading();
        if ((style & boxStyle::yesNo) == 0) return BoxAnswer::ok;
        return answers.isEmpty() ? BoxAnswer::yes : answers.takeFirst();
    }
    QString openFile(const FileDialogRequest& request, QObject* /*owner*/) override {
        fileDialogs.append(request);
        return files.isEmpty() ? QString() : files.takeFirst();
    }
    QString saveFile(const FileDialogRequest& request, QObject* owner) override {
        return openFile(request, owner);
    }
    bool download(const QString& url, const QString& path) override {
        downloads.append(url);
        if (online) return ::download(url, path);
        const auto page = pages.constFind(url);
        QFile file(path);
        return page != pages.constEnd() && file.open(QFile::WriteOnly) && file.write(*page) == page->size();
    }
    bool openWithDesktop(const QString& target) override {
        opened.append(target);
        return desktopOpens;
    }
    QStringList printers() override { return printerNames; }
    void setPrinter(const QString& name) override {
        if (printerNames.contains(name)) printer_ = name;
    }
    void printPicture(const PicturePage& page) override {
        if (printerNames.isEmpty()) throw RuntimeError(errors::printer);
        if (!refusal.isEmpty()) throw RuntimeError(errors::printer, refusal);
        printed.append({printerNames.contains(printer_) ? printer_ : printerNames.first(), page});
    }
    void printPages(const QString& title, const std::function<void(QPagedPaintDevice&)>& paint,
                    QObject* /*owner*/) override {
        if (!refusal.isEmpty()) throw RuntimeError(errors::printer, refusal);
        if (paper != nullptr) paint(*paper);
        printedPages.append(title);
    }
    QDateTime now() override { return moment; }

    /// The boxes shown since the last call, one line each: text|style|title.
    QString told() {
        QStringList lines;
        for (const Box& box : std::exchange(boxes, {}))
            lines += box.text + u'|' + QString::number(box.style) + u'|' + box.title;
        return lines.join(u'\n');
    }

    /// The window below the box shown last.
    const QObject* owner() const { return boxes.isEmpty() ? nullptr : boxes.last().owner; }

    QList<Box> boxes;
    std::function<void()> reading = [] {};  ///< runs while a box is open
    QList<FileDialogRequest> fileDialogs;
    QStringList downloads;
    QList<BoxAnswer> answers;          ///< taken from the front; then Yes
    QStringList files;                 ///< taken from the front; then cancelled
    QHash<QString, QByteArray> pages;  ///< by address; any other fails
    bool online = false;               ///< downloads use the network instead
    QStringList opened;
    bool desktopOpens = true;
    QStringList printerNames;                        ///< the first is the current one until another is chosen
    QString refusal;                                 ///< why the printer takes nothing; "" when it does
    QList<std::pair<QString, PicturePage>> printed;  ///< with the printer
    QPagedPaintDevice* paper = nullptr;              ///< takes printed pages; none needed
    QStringList printedPages;                        ///< their titles
    QDateTime moment{QDate(2026, 3, 9), QTime(8, 5, 3)};

 private:
    QString printer_;
};
