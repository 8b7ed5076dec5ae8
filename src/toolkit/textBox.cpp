#include "toolkit/textBox.h"

#include <QTextBlock>

using namespace Qt::StringLiterals;

QString textBox::text(const QPlainTextEdit& box) {
    QStringList lines;
    for (QTextBlock line = box.document()->begin(); line.isValid(); line = line.next())
        lines += line.text();
    return lines.join(u"\r\n"_s);
}

void textBox::setText(QPlainTextEdit& box, const QString& stored) {
    box.setPlainText(stored);
}
