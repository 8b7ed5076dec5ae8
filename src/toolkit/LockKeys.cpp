#include "toolkit/LockKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>

#ifdef KALVERA_X11
#include <X11/XKBlib.h>
// Xlib's macros would hide names of Qt.
#undef KeyPress
#undef KeyRelease
#endif

namespace {

#ifdef KALVERA_X11
/// State of a named indicator; false when the keyboard has none.
bool indicator(Display* display, const char* name) {
    const Atom atom = XInternAtom(display, name, 1);
    int state = 0;
    return atom != 0 && XkbGetNamedIndicator(display, atom, nullptr, &state, nullptr, nullptr) != 0 &&
           state != 0;
}

Display* x11Display() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->display() : nullptr;
}
#endif

}  // namespace

LockKeys::LockKeys(QObject* parent) : QObject(parent) {
    refresh();
    qGuiApp->installEventFilter(this);
}

void LockKeys::refresh() {
#ifdef KALVERA_X11
    if (Display* display = x11Display()) set(indicator(display, "Caps Lock"), indicator(display, "Num Lock"));
#endif
}

bool LockKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if (press || event->type() == QEvent::KeyRelease) {
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        const bool caps = keyEvent->key() == Qt::Key_CapsLock;
        const bool num = keyEvent->key() == Qt::Key_NumLock;
        if (caps || num) {
#ifdef KALVERA_X11
            if (x11Display() != nullptr) {
                refresh();
                return false;
            }
#endif
            // A key passes this filter for the window and for each widget on its way; count it once.
            if (press && !keyEvent->isAutoRepeat() && watched->isWindowType())
                set(capsLock_ != caps, numLock_ != num);
        }
    }
    return false;
}

void LockKeys::set(bool capsLock, bool numLock) {
    if (capsLock == capsLock_ && numLock == numLock_) return;
    capsLock_ = capsLock;
    numLock_ = numLock;
    emit changed();
}
