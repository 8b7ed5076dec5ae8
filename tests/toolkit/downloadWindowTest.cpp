#include <QCursor>
#include <QTest>

#include "support/RawServer.h"
#include "support/TemporaryProgram.h"
#include "toolkit/WindowOutside.h"

using namespace Qt::StringLiterals;

namespace {

class Canvas final : public QWidget {
 public:
    Canvas() { setMouseTracking(true); }

    int moves = 0;
    std::function<void()> painted = [] {};

 protected:
    void mouseMoveEvent(QMouseEvent*) override { ++moves; }
    void paintEvent(QPaintEvent*) override { painted(); }
};

}  // namespace

using DownloadWindowTest = TemporaryProgram;

TEST_F(DownloadWindowTest, WindowsArePaintedWhileTheUserWaits) {
    Canvas canvas;
    canvas.resize(200, 200);
    canvas.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&canvas));
    QCursor::setPos(canvas.mapToGlobal(QPoint(20, 20)));
    ASSERT_TRUE(QTest::qWaitFor([&canvas] { return canvas.moves > 0; }));
    const int movesBefore = canvas.moves;

    Qt::CursorShape shape = Qt::ArrowCursor;
    // The answer comes once the window has been painted, and without that never.
    const RawServer server([&](QTcpSocket& socket) {
        shape = QGuiApplication::overrideCursor()->shape();
        QCursor::setPos(canvas.mapToGlobal(QPoint(120, 120)));
        canvas.painted = [&socket] { socket.write("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nfilm"); };
        canvas.update();
    });
    WindowOutside real;
    const QString path = at(u"page.htm"_s);
    EXPECT_TRUE(real.download(server.root(), path));
    canvas.painted = [] {};
    EXPECT_EQ(canvas.moves, movesBefore);
    EXPECT_EQ(shape, Qt::WaitCursor);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return canvas.moves > movesBefore; }));

    EXPECT_EQ(content(path), "film");
}
