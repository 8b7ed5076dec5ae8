#include "support/ScriptedOutside.h"

#include <QFile>

#include "platform/download.h"
#include "platform/errors.h"

BoxAnswer ScriptedOutside::messageBox(const QString& text, int style, const QString& title, QObject*) {
    boxes.append({text, style, title});
    if ((style & boxStyle::yesNo) == 0) return BoxAnswer::ok;
    return answers.isEmpty() ? BoxAnswer::yes : answers.takeFirst();
}

QString ScriptedOutside::told() {
    QStringList lines;
    for (const Box& box : std::exchange(boxes, {}))
        lines += box.text + u'|' + QString::number(box.style) + u'|' + box.title;
    return lines.join(u'\n');
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

bool ScriptedOutside::openWithDesktop(const QString& target) {
    opened.append(target);
    return desktopOpens;
}

void ScriptedOutside::setPrinter(const QString& name) {
    if (printerNames.contains(name)) printer_ = name;
}

void ScriptedOutside::printPicture(const PicturePage& page) {
    if (printerNames.isEmpty()) throw RuntimeError(errors::printer);
    printed.append({printerNames.contains(printer_) ? printer_ : printerNames.first(), page});
}
