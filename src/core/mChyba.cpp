#include "core/mChyba.h"

#include "platform/Outside.h"

using namespace Qt::StringLiterals;

void ChybaAplikace(const QString& text, const QString& where) {
    MsgBox(text + u"\n\n"_s + where, boxStyle::critical, u"Chyba aplikace:"_s);
}
