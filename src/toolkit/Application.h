#pragma once

#include <QApplication>
#include <QTranslator>
#include <new>

#include "platform/errors.h"
#include "toolkit/WindowOutside.h"

/// The application object: Qt's Czech translation, the user's regional settings, the desktop's letters,
/// windows kept on the screen, the real Outside, and the handler of last resort for failures.
class Application : public QApplication {
    Q_OBJECT

 public:
    Application(int& argc, char** argv);

    /// Delivers an event. A RuntimeError that leaves an event handler is shown in a critical box with its
    /// number and description; the program then exits at once with code 1, without running any further
    /// handler.
    bool notify(QObject* receiver, QEvent* event) override;

    /// Runs `work` under the same rule, for code outside event handlers.
    template <typename Work>
    static void guarded(Work&& work) {
        try {
            work();
        } catch (const RuntimeError& failure) {
            endProgram(failure);
        } catch (const std::bad_alloc&) {
            endProgram(RuntimeError(errors::outOfMemory));
        }
    }

 private:
    /// Returns only when the program is already about to end.
    static void endProgram(const RuntimeError& failure);

    /// Shows the focus to keyboard users. Qt does so only after the first Tab, and until then Enter would
    /// press a button that looks like any other.
    void showFocusIn(QWidget* window) const;
    /// Keeps a window that has just been shown on the screen; other receivers of the event stay as they are.
    static void keepOnScreen(const QObject* shown);

    bool byKeys_ = false;
    WindowOutside outside_;
    QTranslator qtTexts_;
};
