// SPDX-License-Identifier: MIT
#include "platform/window_pull.h"
#include "support/test_case.h"

#include <QMouseEvent>
#include <QRasterWindow>

namespace wrenfold {

namespace {

/// A window out of the window manager's hands, as one that has none is.
class PulledWindow : public QRasterWindow
{
public:
    explicit PulledWindow(Qt::Edges edges)
        : m_pull(edges)
    {
        setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        setMinimumSize({200, 100});
        setMaximumSize({400, 300});
        setGeometry(100, 100, 300, 200);
        show();
    }

protected:
    void mousePressEvent(QMouseEvent *event) override { m_pull.press(*event, *this); }
    void mouseMoveEvent(QMouseEvent *event) override { m_pull.move(*event, *this); }
    void mouseReleaseEvent(QMouseEvent *event) override { m_pull.release(*event); }

private:
    WindowPull m_pull;
};

/// The pointer's button goes down, and the pointer to points on the screen.
void pull(QWindow &window, const QPoint &from, const QList<QPoint> &to,
          Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mousePress(&window, button, {}, window.mapFromGlobal(from));
    for (const QPoint &point : to) {
        const QPoint local = window.mapFromGlobal(point);
        QMouseEvent move(QEvent::MouseMove, local, point, Qt::NoButton, button, {});
        QCoreApplication::sendEvent(&window, &move);
    }
    QTest::mouseRelease(&window, button, {}, window.mapFromGlobal(to.last()));
}

} // namespace

class WindowPullTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theFrameFollowsThePullWithinItsBounds_data()
    {
        QTest::addColumn<Qt::Edges>("edges");
        QTest::addColumn<QPoint>("way");
        QTest::addColumn<QRect>("pulled");
        const auto row = [](const char *name, Qt::Edges edges, const QPoint &way, const QRect &pulled) {
            QTest::newRow(name) << edges << way << pulled;
        };
        row("moved", {}, {-150, 20}, {-50, 120, 300, 200});
        row("right", Qt::RightEdge, {30, 50}, {100, 100, 330, 200});
        row("left", Qt::LeftEdge, {30, 50}, {130, 100, 270, 200});
        row("top", Qt::TopEdge, {30, -50}, {100, 50, 300, 250});
        row("bottom", Qt::BottomEdge, {30, -50}, {100, 100, 300, 150});
        row("a corner", Qt::TopEdge | Qt::LeftEdge, {10, 20}, {110, 120, 290, 180});
        row("the opposite corner", Qt::BottomEdge | Qt::RightEdge, {10, 20}, {100, 100, 310, 220});
        row("no narrower than its bound", Qt::LeftEdge, {250, 0}, {200, 100, 200, 200});
        row("no wider than its bound", Qt::LeftEdge, {-250, 0}, {0, 100, 400, 200});
        row("no lower than its bound", Qt::TopEdge, {0, 150}, {100, 200, 300, 100});
        row("no higher than its bound", Qt::BottomEdge, {0, 150}, {100, 100, 300, 300});
    }
    void theFrameFollowsThePullWithinItsBounds()
    {
        QFETCH(Qt::Edges, edges);
        QFETCH(QPoint, way);
        QFETCH(QRect, pulled);
        QCOMPARE(pulledFrame({100, 100, 300, 200}, edges, way, {200, 100}, {400, 300}), pulled);
    }

    void aWindowThatNobodyManagesIsMovedWithThePointer()
    {
        PulledWindow window({});
        pull(window, {150, 150}, {{160, 150}, {200, 180}});
        QCOMPARE(window.geometry(), QRect(150, 130, 300, 200));
        pull(window, {200, 180}, {{150, 150}});
        QCOMPARE(window.geometry(), QRect(100, 100, 300, 200));
    }

    void aWindowThatNobodyManagesIsResizedWithThePointer()
    {
        PulledWindow window(Qt::TopEdge | Qt::LeftEdge);
        pull(window, {101, 101}, {{111, 101}, {141, 121}});
        QCOMPARE(window.geometry(), QRect(140, 120, 260, 180));
    }

    void aClickWithATremblingHandMovesNothing()
    {
        PulledWindow window({});
        pull(window, {150, 150}, {{152, 151}});
        QCOMPARE(window.geometry(), QRect(100, 100, 300, 200));
    }

    void onlyTheLeftButtonPulls()
    {
        PulledWindow window({});
        pull(window, {150, 150}, {{200, 180}}, Qt::RightButton);
        QCOMPARE(window.geometry(), QRect(100, 100, 300, 200));
    }

    void aMoveWithoutAPressIsNone()
    {
        PulledWindow window({});
        pull(window, {150, 150}, {{152, 151}});
        QMouseEvent move(QEvent::MouseMove, QPoint(150, 150), QPoint(250, 250), Qt::NoButton, Qt::LeftButton,
                         {});
        QCoreApplication::sendEvent(&window, &move);
        QCOMPARE(window.geometry(), QRect(100, 100, 300, 200));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::WindowPullTest)
#include "window_pull_test.moc"
