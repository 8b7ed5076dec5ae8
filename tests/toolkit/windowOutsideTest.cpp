#include "toolkit/WindowOutside.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QThread>
#include <cstdio>

#include "support/TemporaryProgram.h"
#include "support/WebServer.h"
#include "support/windows.h"
#include "toolkit/Application.h"
#include "toolkit/DownloadWindow.h"
#include "toolkit/RunningProgram.h"

namespace {

class WindowOutsideTest : public TemporaryProgram {
 protected:
    WindowOutside real;
};

class Canvas final : public QWidget {
 public:
    Canvas() { setMouseTracking(true); }

    int moves = 0;
    std::function<void()> painted = [] {};

 protected:
    void mouseMoveEvent(QMouseEvent*) override { ++moves; }
    void paintEvent(QPaintEvent*) override { painted(); }
};

/// Prints the open box and presses its button.
void answerBox() {
    const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    std::fprintf(stderr, "%s|%s|%d\n", qUtf8Printable(box->windowTitle()), qUtf8Printable(box->text()),
                 static_cast<int>(box->icon()));
    box->button(QMessageBox::Ok)->click();
}

/// Fails in an event handler, and once more in another while the box of the first failure is open.
[[noreturn]] void failInHandlers() {
    QTimer::singleShot(0, [] {
        QTimer::singleShot(0, [] {
            QTimer::singleShot(0, answerBox);
            throw RuntimeError(errors::typeMismatch);
        });
        throw RuntimeError(errors::objectNotSet);
    });
    QApplication::exec();
    std::fprintf(stderr, "went on\n");
    std::_Exit(0);
}

}  // namespace

TEST(UnhandledFailureDeathTest, TheFirstOneEndsTheProgramWithABoxAndExitCodeOne) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(failInHandlers(), testing::ExitedWithCode(1),
                "Brem DVD Kalv[^|]*\\|[^|]*91:\nObjekt nen[^|]*Program bude ukon[^|]*\\|3\n$");
}

TEST_F(WindowOutsideTest, BoxesShowPlainTextAndTheWholeTitleAndTellWhatWasAnswered) {
    const std::tuple<int, QString, Qt::Key, BoxAnswer, QMessageBox::Icon> cases[] = {
        {0, u""_s, Qt::Key_Return, BoxAnswer::ok, QMessageBox::NoIcon},
        {boxStyle::critical, u"Chyba"_s, Qt::Key_Escape, BoxAnswer::ok, QMessageBox::Critical},
        {boxStyle::exclamation, u"Vyhledávání výrazu: NEJNEOBHOSPODAŘOVÁVATELNĚJŠÍ"_s, Qt::Key_Return,
         BoxAnswer::ok, QMessageBox::Warning},
        {boxStyle::question | boxStyle::yesNo, u"?"_s, Qt::Key_Return, BoxAnswer::yes, QMessageBox::Question},
        {boxStyle::information | boxStyle::yesNo, u"?"_s, Qt::Key_Escape, BoxAnswer::no,
         QMessageBox::Information}};
    for (const auto& [style, title, key, answer, icon] : cases) {
        SCOPED_TRACE(style);
        BoxAnswer given{};
        inModalWindow([&, style = style,
                       title = title] { given = real.messageBox(u"<b>Film</b>"_s, style, title, nullptr); },
                      [&, title = title, icon = icon, key = key](QWidget& window) {
                          const auto& box = dynamic_cast<QMessageBox&>(window);
                          EXPECT_EQ(control<QLabel>(box, "qt_msgbox_label").textFormat(), Qt::PlainText);
                          EXPECT_EQ(box.windowTitle(), title.isEmpty() ? u"Brem DVD Kalvéra"_s : title);
                          EXPECT_GT(box.width(), box.fontMetrics().horizontalAdvance(title));
                          EXPECT_EQ(box.icon(), icon);
                          QTest::keyClick(&window, key);
                      });
        EXPECT_EQ(given, answer);
    }
}

TEST_F(WindowOutsideTest, BoxesBelongToAVisibleWindow) {
    QWidget lower;
    QWidget upper;
    for (QWidget* window : {&lower, &upper}) {
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }
    QWidget closed;
    closed.show();
    closed.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&closed));
    closed.hide();
    QDialog beingMade(&lower);
    QLabel inLower(&lower);
    inLower.show();
    const std::pair<QObject*, const QWidget*> cases[] = {
        {nullptr, &upper}, {&lower, &lower}, {&inLower, &lower}, {&beingMade, &lower}};
    for (const auto& [owner, expected] : cases) {
        QApplication::setActiveWindow(nullptr);  // as after a window was closed
        inModalWindow([&, owner = owner] { real.messageBox(u"Film"_s, 0, {}, owner); },
                      [expected = expected](QWidget& box) {
                          EXPECT_EQ(box.parentWidget(), expected);
                          QTest::keyClick(&box, Qt::Key_Return);
                      });
    }
}

TEST_F(WindowOutsideTest, FileDialogsStartInTheirFolderAndAddTheSuffix) {
    write(u"obal.jpg"_s, "picture");
    const FileDialogRequest request{u"Obrázek"_s, u"JPEG Obrazek (*.jpg)"_s, u"*.jpg"_s, folder(), u"jpg"_s};
    const auto choose = [](const QString& name) {
        return [name](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), u"Obrázek"_s);
            auto& box = control<QLineEdit>(dialog, "fileNameEdit");
            box.setText(name);
            QTest::keyClick(&box, name.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        };
    };
    QString chosen;
    inModalWindow([&] { chosen = real.openFile(request, nullptr); }, choose(u"obal.jpg"_s));
    EXPECT_EQ(chosen, at(u"obal.jpg"_s));
    inModalWindow([&] { chosen = real.saveFile(request, nullptr); }, choose(u"saved"_s));
    EXPECT_EQ(chosen, at(u"saved.jpg"_s));
    inModalWindow([&] { chosen = real.openFile(request, nullptr); }, choose(u""_s));
    EXPECT_EQ(chosen, u""_s);
}

TEST_F(WindowOutsideTest, PrintingWithoutAPrinterFails) {
    qputenv("CUPS_SERVER", "/nonexistent/printers");
    EXPECT_EQ(real.printers(), QStringList());
    EXPECT_EQ(failureOf([this] { real.printPicture({}); }), errors::printer);
}

TEST_F(WindowOutsideTest, WindowsArePaintedDuringADownload) {
    Canvas canvas;
    canvas.resize(200, 200);
    canvas.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&canvas));
    QCursor::setPos(canvas.mapToGlobal(QPoint(20, 20)));
    ASSERT_TRUE(QTest::qWaitFor([&canvas] { return canvas.moves > 0; }));
    const int movesBefore = canvas.moves;

    Qt::CursorShape shape = Qt::ArrowCursor;
    // The answer is sent by the painting of the window.
    const WebServer server([&](QTcpSocket& socket) {
        shape = QGuiApplication::overrideCursor()->shape();
        QCursor::setPos(canvas.mapToGlobal(QPoint(120, 120)));
        canvas.painted = [&socket] { socket.write("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nfilm"); };
        canvas.update();
    });
    EXPECT_TRUE(real.download(server.root(), at(u"page.htm"_s)));
    canvas.painted = [] {};
    EXPECT_EQ(canvas.moves, movesBefore);
    EXPECT_EQ(shape, Qt::WaitCursor);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return canvas.moves > movesBefore; }));
    EXPECT_EQ(content(u"page.htm"_s), "film");
}

TEST_F(WindowOutsideTest, ALongDownloadIsWatchedAndCanBeLeft) {
    for (const bool left : {true, false}) {
        QTcpSocket* asked = nullptr;
        const WebServer server([&asked](QTcpSocket& socket) {
            asked = &socket;
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: 1026\r\n\r\n" + QByteArray(1025, 'x'));
        });
        bool watched = false;
        QTimer look;
        look.callOnTimeout(QApplication::instance(), [&] {
            auto* window = shownWindow<DownloadWindow>();
            if (window == nullptr || !QTest::qWaitForWindowActive(window) || watched) return;
            QStringList texts;
            for (const QLabel* label : window->findChildren<QLabel*>())
                texts += label->text();
            if (texts != QStringList{u"Staženo: 2 kB"_s, u"Čeká se na server 127.0.0.1"_s}) return;
            watched = true;
            for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_A})  // meant for another window
                QTest::keyClick(window->focusWidget(), key);
            EXPECT_TRUE(window->isVisible());
            left ? QTest::keyClick(window->focusWidget(), Qt::Key_Escape) : void(asked->write("x"));
        });
        look.start(10);
        EXPECT_NE(real.download(server.root(), at(u"page.htm"_s)), left);
        EXPECT_TRUE(watched);
        EXPECT_EQ(shownWindow<DownloadWindow>(), nullptr);
        EXPECT_EQ(QFile::exists(at(u"page.htm"_s)), !left);
    }
}

TEST_F(WindowOutsideTest, AnotherStartBringsTheMinimizedWindowBack) {
    EXPECT_FALSE(RunningProgram::callToFront(folder()));
    const RunningProgram running(folder());
    QWidget window;
    window.showMinimized();
    bool answered = false;
    const std::unique_ptr<QThread> other(
        QThread::create([&] { answered = RunningProgram::callToFront(folder()); }));
    other->start();
    EXPECT_TRUE(QTest::qWaitFor([&other] { return other->isFinished(); }));
    EXPECT_TRUE(answered);
    EXPECT_FALSE(window.isMinimized());
}
