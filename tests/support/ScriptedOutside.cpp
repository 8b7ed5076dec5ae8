#include "support/ScriptedOutside.h"

#include <QFile>

#include "platform/download.h"

BoxAnswer ScriptedOutside::messageBox(const QString& text, int style, const QString& title, QObject*) {
    boxes.append({text, style, title});
    if ((style & boxStyle::yesNo) == 0) return BoxAnswer::ok;
    return answers.isEmpty() ? BoxAnswer::yes : answers.takeFirst();
}

QString ScriptedOutside::openFile(const FileDialogRequest& request, QObject*) {
    fileDialogs.append(request);
    return files.isEmpty() ? QString() : files.takeFirst();
}

QString ScriptedOutside::saveFile(const FileDialogRequest& request, QObject* owner) {
    return openFile(request, owner);
}

bool ScriptedOutside::download(const QString& url, const QString& path) {
    downloads.append(url);
    if (online) return ::download(url, path);
    const auto page = pages.constFind(url);
    QFile file(path);
    return page != pages.constEnd() && file.open(QIODevice::WriteOnly) && file.write(*page) == page->size();
}
