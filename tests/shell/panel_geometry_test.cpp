// SPDX-License-Identifier: MIT
#include "shell/panel_geometry.h"
#include "support/test_case.h"

Q_DECLARE_METATYPE(wrenfold::PanelGeometry)
Q_DECLARE_METATYPE(std::optional<QRect>)

namespace wrenfold {

class PanelGeometryTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void thePanelIsResizedAsTheListAndTheBoardComeAndGo_data()
    {
        QTest::addColumn<PanelGeometry>("current");
        QTest::addColumn<std::optional<QRect>>("screen");
        QTest::addColumn<bool>("isListHidden");
        QTest::addColumn<bool>("isBoardPresented");
        QTest::addColumn<PanelGeometry>("resized");
        const std::optional<QRect> screen = QRect(0, 30, 1280, 770);
        const std::optional<QRect> none;
        const auto compact = [](int x, int height = 500) {
            return PanelGeometry{QRect(x, 100, 344, height), std::nullopt, false};
        };
        const auto wide = [](int x, int origin, bool isLeft = false) {
            return PanelGeometry{QRect(x, 100, 716, 500), origin, isLeft};
        };
        const auto row = [](const char *name, const PanelGeometry &current, const std::optional<QRect> &on,
                            bool isListHidden, bool isBoardPresented, const PanelGeometry &resized) {
            QTest::newRow(name) << current << on << isListHidden << isBoardPresented << resized;
        };
        row("as it is", compact(200), screen, false, false, compact(200));
        row("folded", compact(200), screen, true, false, compact(200, 268));
        row("unfolded", compact(200, 268), screen, false, false, compact(200));
        row("the board opens", compact(200), screen, false, true, wide(200, 200));
        row("the board always has the full height", compact(200, 268), screen, true, true, wide(200, 200));
        row("the board closes", wide(200, 200), screen, false, false, compact(200));
        row("the board closes over a folded list", wide(200, 200), screen, true, false, compact(200, 268));
        row("at the right edge the panel moves left and the board lies left", compact(936), screen, false,
            true, wide(564, 936, true));
        row("near the right edge the list moves less with the board on its right", compact(600), screen,
            false, true, wide(564, 600));
        row("pushed back by half the board's width", compact(750), screen, false, true, wide(564, 750));
        row("pushed back by a little more", compact(751), screen, false, true, wide(564, 751, true));
        row("it just fits", compact(564), screen, false, true, wide(564, 564));
        row("and goes back", wide(564, 936, true), screen, false, false, compact(936));
        row("a wide panel that is widened again keeps where it came from and its side", wide(564, 936, true),
            screen, false, true, wide(564, 936, true));
        row("a wide panel that was moved goes back to where it came from", wide(100, 936, true), screen,
            false, false, compact(936));
        row("where it came from is no longer on the screen", wide(100, 2000), screen, false, false,
            compact(936));
        row("on a narrow screen the left edge counts", compact(200), QRect(0, 0, 600, 800), false, true,
            wide(0, 200, true));
        row("left of the screen", compact(-50), screen, false, false, compact(0));
        row("a screen that does not begin at zero", compact(1500), QRect(1280, 0, 1024, 768), false, true,
            wide(1500, 1500));
        row("without a screen nothing is clamped", compact(5000), none, false, true, wide(5000, 5000));
        row("a panel sized by hand gets its sizes back", {QRect(10, 20, 700, 700), std::nullopt, false},
            screen, false, false, {QRect(10, 20, 344, 500), std::nullopt, false});
    }
    void thePanelIsResizedAsTheListAndTheBoardComeAndGo()
    {
        QFETCH(PanelGeometry, current);
        QFETCH(std::optional<QRect>, screen);
        QFETCH(bool, isListHidden);
        QFETCH(bool, isBoardPresented);
        QFETCH(PanelGeometry, resized);
        const PanelGeometry actual = resizedPanel(current, screen, isListHidden, isBoardPresented);
        QCOMPARE(actual.frame, resized.frame);
        QCOMPARE(actual.compactOriginX, resized.compactOriginX);
        QCOMPARE(actual.isBoardLeftOfList, resized.isBoardLeftOfList);
    }

    void repeatedWideningNeverOverwritesTheCompactPlace()
    {
        const QRect screen(0, 0, 1280, 800);
        PanelGeometry panel = {QRect(936, 100, 344, 500), std::nullopt, false};
        for (int i = 0; i < 3; ++i)
            panel = resizedPanel(panel, screen, i % 2 == 1, true);
        QCOMPARE(resizedPanel(panel, screen, false, false).frame, QRect(936, 100, 344, 500));
    }

    void aPanelIsKeptInSightOnTheScreenWhereMostOfItIs_data()
    {
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<QRect>("frame");
        QTest::addColumn<QPoint>("place");
        const QRect left(0, 30, 1280, 770);
        const QRect right(1280, 0, 1024, 768);
        const auto at = [](int x, int y) { return QRect(x, y, 344, 500); };
        QTest::newRow("in sight") << QList<QRect>{left} << at(100, 100) << QPoint(100, 100);
        QTest::newRow("below and right of it") << QList<QRect>{left} << at(2000, 900) << QPoint(936, 300);
        QTest::newRow("above and left of it") << QList<QRect>{left} << at(-400, -400) << QPoint(0, 30);
        QTest::newRow("a screen too small") << QList<QRect>{{0, 0, 300, 300}} << at(100, 100) << QPoint(0, 0);
        QTest::newRow("on the second screen")
            << QList<QRect>{left, right} << at(1500, 50) << QPoint(1500, 50);
        QTest::newRow("mostly on the first") << QList<QRect>{left, right} << at(1000, 50) << QPoint(936, 50);
        QTest::newRow("mostly on the second")
            << QList<QRect>{left, right} << at(1200, 50) << QPoint(1280, 50);
        QTest::newRow("the second is gone") << QList<QRect>{left} << at(1500, 50) << QPoint(936, 50);
        QTest::newRow("on none of them") << QList<QRect>{left, right} << at(5000, 50) << QPoint(936, 50);
        QTest::newRow("no screen") << QList<QRect>{} << at(5000, 50) << QPoint(5000, 50);
    }
    void aPanelIsKeptInSightOnTheScreenWhereMostOfItIs()
    {
        QFETCH(QList<QRect>, screens);
        QFETCH(QRect, frame);
        QFETCH(QPoint, place);
        QCOMPARE(keptInSight(screens, frame), QRect(place, frame.size()));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PanelGeometryTest)
#include "panel_geometry_test.moc"
