#include "toolkit/LockKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>

#ifdef KALVERA_X11
#include <X11/XKBlib.h>
// Xlib's macros would hide names of Qt.
#undef KeyPress
#undef KeyRelease
#undef None
#endif

using namespace Qt::StringLiterals;

namespace {

// Bits of a key event's native modifiers. The first is fixed by XKB, the second by its keymaps: all of them
// put Num Lock on Mod2.
constexpr quint32 lockModifier = 0x2;
constexpr quint32 secondModifier = 0x10;

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

LockKeys::Source LockKeys::usualSource() {
#ifdef KALVERA_X11
    if (x11Display() != nullptr) return Source::indicators;
#endif
    const QString platform = QGuiApplication::platformName();
    return platform == u"xcb" || platform.startsWith(u"wayland") ? Source::keyEvents : Source::presses;
}

LockKeys::LockKeys(QObject* parent, Source source) : QObject(parent), source_(source) {
    refresh();
    if (source_ == Source::presses) set(false, false);
    qGuiApp->installEventFilter(this);
    if (source_ != Source::keyEvents) return;
    // Keys pressed in other applications are not seen.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive) set({}, {});
    });
}

void LockKeys::refresh() {
#ifdef KALVERA_X11
    if (source_ != Source::indicators) return;
    if (Display* display = x11Display()) set(indicator(display, "Caps Lock"), indicator(display, "Num Lock"));
#endif
}

bool LockKeys::eventFilter(QObject* watched, QEvent* event) {
    // A key passes this filter for the window and for each widget on its way; one look is enough.
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (key && watched->isWindowType()) follow(*static_cast<QKeyEvent*>(event));
    return false;
}

void LockKeys::follow(const QKeyEvent& event) {
    const bool caps = event.key() == Qt::Key_CapsLock;
    const bool num = event.key() == Qt::Key_NumLock;
    if (source_ == Source::indicators) {
        if (caps || num) refresh();
        return;
    }
    const bool pressed = event.type() == QEvent::KeyPress && !event.isAutoRepeat();
    if (source_ == Source::presses) {
        if (pressed) set(*capsLock_ != caps, *numLock_ != num);
        return;
    }
    // Keys that no keyboard has sent carry no modifiers.
    if (event.nativeScanCode() == 0) return;
    const bool capsBefore = (event.nativeModifiers() & lockModifier) != 0;
    const bool numBefore = (event.nativeModifiers() & secondModifier) != 0;
    if (!caps && !num) {
        set(capsBefore, numBefore);
    } else if (pressed) {
        // The modifiers are those before the key. At its release they would hold the key itself.
        set(capsBefore != caps, numBefore != num);
    }
}

void LockKeys::set(std::optional<bool> capsLock, std::optional<bool> numLock) {
    if (capsLock == capsLock_ && numLock == numLock_) return;
    capsLock_ = capsLock;
    numLock_ = numLock;
    emit changed();
}
