#include "toolkit/Application.h"

#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QScreen>
#include <QWidget>
#include <cstdlib>

#include "toolkit/accessibility.h"
#include "toolkit/appTitle.h"
#include "toolkit/hairline.h"
#include "toolkit/letters.h"
#include "toolkit/onScreen.h"

using namespace Qt::StringLiterals;

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(u"BremDVDKalvera"_s);
    setWindowIcon(QIcon(u":/icons/app.svg"_s));
    // Under Wayland the icon comes from the desktop entry of this name.
    setDesktopFileName(u"kalvera"_s);
    letters::use(letters::fitTo(font(), primaryScreen()->availableSize()));
    hairline::improveStyle();
    accessibility::install();
    connect(this, &QApplication::focusChanged, this, [this](QWidget* /*before*/, const QWidget* now) {
        if (now != nullptr) showFocusIn(now->window());
    });
    // Users of a system without regional settings are Czech.
    if (QLocale().language() == QLocale::C)
        QLocale::setDefault(QLocale(QLocale::Czech, QLocale::CzechRepublic));
    const QString name = u"qtbase_cs"_s;
    if (qtTexts_.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        qtTexts_.load(name, applicationDirPath() + u"/translations"_s)) {
        installTranslator(&qtTexts_);
    }
}

void Application::showFocusIn(QWidget* window) const {
    if (byKeys_ && window != nullptr) window->setAttribute(Qt::WA_KeyboardFocusChange);
}

void Application::keepOnScreen(const QObject* shown) {
    for (QWidget* window : topLevelWidgets()) {
        if (window == shown) onScreen::keep(*window);
    }
}

bool Application::notify(QObject* receiver, QEvent* event) {
    bool handled = false;
    // The receiver must not be cast: the browser engine's are not all what their meta-object says.
    if (event->type() == QEvent::MouseButtonPress) byKeys_ = false;
    // Some desktops set their font late or anew, but places have been chosen for this one.
    if (event->type() == QEvent::ApplicationFontChange && receiver == this) letters::keepInUse();
    if (event->type() == QEvent::KeyPress) {
        byKeys_ = true;
        showFocusIn(activeWindow());
    }
    guarded([&] { handled = QApplication::notify(receiver, event); });
    // Not before: a dialog centres itself on its owner when it is shown, unless somebody has moved it.
    // Nor when one comes back after it was minimised, from where its user had put it.
    if (event->type() == QEvent::Show && !event->spontaneous()) keepOnScreen(receiver);
    return handled;
}

void Application::endProgram(const RuntimeError& failure) {
    // While the box is open, other handlers can run and fail; only the first failure is shown.
    static bool ending = false;
    if (ending) return;
    ending = true;
    Outside::current().messageBox(
        u"Chyba číslo %1:\n%2\n\nProgram bude ukončen."_s.arg(failure.number()).arg(failure.description()),
        boxStyle::critical, appTitle(), nullptr);
    std::_Exit(EXIT_FAILURE);
}
