#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

#include "toolkit/Application.h"

using namespace Qt::StringLiterals;

namespace {

/// Fails in an event handler, and answers the box that this brings up, whose texts it tells on standard
/// error.
[[noreturn]] void failInAHandler() {
    QTimer::singleShot(0, [] {
        QTimer::singleShot(0, [] {
            const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            std::fprintf(stderr, "%s|%s|%d\n", qUtf8Printable(box->windowTitle()),
                         qUtf8Printable(box->text()), static_cast<int>(box->icon()));
            box->button(QMessageBox::Ok)->click();
        });
        throw RuntimeError(errors::objectNotSet);
    });
    QApplication::exec();
    std::fprintf(stderr, "went on\n");
    std::_Exit(0);
}

}  // namespace

TEST(UnhandledFailureDeathTest, EndsTheProgramWithABoxAndExitCodeOne) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(failInAHandler(), testing::ExitedWithCode(1),
                "Brem DVD Kalv.*91:\nObjekt nen.*Program bude ukon.*\\|3\n$");
}
