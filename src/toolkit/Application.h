#pragma once

#include <QApplication>
#include <QTranslator>
#include <new>

#include "platform/errors.h"
#include "toolkit/WindowOutside.h"

/// The application object: Czech texts of Qt's own, the user's regional settings, the way to the outside
/// world, and the one place where a failure that nobody handled ends the program.
class Application : public QApplication {
    Q_OBJECT

 public:
    Application(int& argc, char** argv);

    /// Delivers an event. A RuntimeError that leaves a handler is shown in a critical box with its number and
    /// description; the program then ends at once with exit code 1, and no further handler runs.
    bool notify(QObject* receiver, QEvent* event) override;

    /// Runs `work` under the same rule, for what happens outside event handlers.
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
    /// Returns only when the program is about to end already.
    static void endProgram(const RuntimeError& failure);

    /// Shows where the focus is to whoever works with keys. Qt does so only from the first Tab on, so that
    /// Enter would press a button that cannot be told from the others.
    void showFocusIn(QWidget* window) const;

    bool byKeys_ = false;
    WindowOutside outside_;
    QTranslator qtTexts_;
};
