// SPDX-License-Identifier: MIT
#include "shell/resize_handle.h"
#include "support/test_case.h"

namespace wrenfold {

class ResizeHandleTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theHandlesSurroundTheWindowAndDoNotOverlap()
    {
        const QSize window(344, 500);
        const QList<Qt::Edges> all = {Qt::TopEdge,
                                      Qt::BottomEdge,
                                      Qt::LeftEdge,
                                      Qt::RightEdge,
                                      Qt::TopEdge | Qt::LeftEdge,
                                      Qt::TopEdge | Qt::RightEdge,
                                      Qt::BottomEdge | Qt::LeftEdge,
                                      Qt::BottomEdge | Qt::RightEdge};
        for (const Qt::Edges edges : all) {
            const QRect rect = resizeHandleRect(edges, window);
            QVERIFY(QRect(QPoint(), window).contains(rect));
            QCOMPARE(rect.left() == 0 && !(edges & (Qt::TopEdge | Qt::BottomEdge)), edges == Qt::LeftEdge);
            for (const Qt::Edges other : all)
                QVERIFY(edges == other || !rect.intersects(resizeHandleRect(other, window)));
        }
        QCOMPARE(resizeHandleRect(Qt::RightEdge, window), QRect(339, 10, 5, 480));
        QCOMPARE(resizeHandleRect(Qt::BottomEdge, window), QRect(10, 495, 324, 5));
        QCOMPARE(resizeHandleRect(Qt::BottomEdge | Qt::RightEdge, window), QRect(334, 490, 10, 10));
    }

    void theCursorSaysWhichWay()
    {
        QWidget window;
        QCOMPARE(ResizeHandle(Qt::LeftEdge, &window).cursor().shape(), Qt::SizeHorCursor);
        QCOMPARE(ResizeHandle(Qt::TopEdge, &window).cursor().shape(), Qt::SizeVerCursor);
        QCOMPARE(ResizeHandle(Qt::TopEdge | Qt::LeftEdge, &window).cursor().shape(), Qt::SizeFDiagCursor);
        QCOMPARE(ResizeHandle(Qt::BottomEdge | Qt::LeftEdge, &window).cursor().shape(), Qt::SizeBDiagCursor);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ResizeHandleTest)
#include "resize_handle_test.moc"
