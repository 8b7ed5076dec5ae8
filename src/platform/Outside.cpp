#include "platform/Outside.h"

#include "platform/LockPatience.h"
#include "platform/errors.h"

namespace {
Outside* inUse = nullptr;
}

Outside::Outside() : former_(inUse) {
    inUse = this;
}

Outside::~Outside() {
    inUse = former_;
}

Outside& Outside::current() {
    if (inUse == nullptr) throw RuntimeError(errors::objectNotSet);
    return *inUse;
}

BoxAnswer MsgBox(const QString& text, int style, const QString& title) {
    return MsgBox(nullptr, text, style, title);
}

BoxAnswer MsgBox(QObject* owner, const QString& text, int style, const QString& title) {
    // What follows the box belongs to what was asked for before it, however long it is read.
    const LockPatiencePause reading;
    return Outside::current().messageBox(text, style, title, owner);
}
