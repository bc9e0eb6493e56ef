// SPDX-License-Identifier: MIT
#include "shell/companion_place.h"
#include "support/test_case.h"

#include <array>

Q_DECLARE_METATYPE(std::optional<QRect>)

namespace wrenfold {

class CompanionPlaceTest : public TestCase
{
    Q_OBJECT

    static constexpr QSize size{400, 300};
    static constexpr QRect screen{0, 0, 1200, 800};
    static constexpr QPoint centred{400, 250};

private Q_SLOTS:
    void aWindowStandsInTheMiddleOrBesideThePanel_data()
    {
        QTest::addColumn<QRect>("visibleFrame");
        QTest::addColumn<std::optional<QRect>>("panel");
        QTest::addColumn<QPoint>("expected");
        const auto row = [](const char *name, const QRect &visibleFrame, const std::optional<QRect> &panel,
                            const QPoint &expected) {
            QTest::newRow(name) << visibleFrame << panel << expected;
        };
        row("no panel", screen, std::nullopt, centred);
        row("panel in a corner", screen, QRect(0, 0, 200, 200), centred);
        row("panel elsewhere, a gap away", screen, QRect(188, 250, 200, 300), centred);
        row("panel one pixel nearer", screen, QRect(189, 250, 200, 300), {401, 250});
        row("to the left", screen, QRect(700, 100, 300, 600), {288, 250});
        row("to the right", screen, QRect(200, 100, 300, 600), {512, 250});
        row("upwards", screen, QRect(300, 500, 600, 200), {400, 188});
        row("downwards", screen, QRect(300, 100, 600, 200), {400, 312});
        row("the shortest way is out of the screen", screen, QRect(210, 350, 850, 450), {400, 38});
        row("no way is free", screen, QRect(300, 200, 600, 400), centred);
        row("as high as the screen lets it", screen, QRect(300, 312, 600, 488), {400, 0});
        row("one pixel too high", screen, QRect(300, 311, 600, 489), centred);
        row("second screen", QRect(1200, -100, 1200, 800), QRect(1900, 0, 300, 600), {1488, 150});
        row("panel on the other screen", QRect(1200, -100, 1200, 800), QRect(400, 100, 300, 600),
            {1600, 150});
        row("screen as large as the window", QRect(50, 30, 400, 300), QRect(60, 40, 100, 100), {50, 30});
        row("screen smaller than the window", QRect(50, 30, 320, 200), QRect(60, 40, 100, 100), {50, 30});
    }
    void aWindowStandsInTheMiddleOrBesideThePanel()
    {
        QFETCH(QRect, visibleFrame);
        QFETCH(std::optional<QRect>, panel);
        QFETCH(QPoint, expected);
        QCOMPARE(besidePanel(size, visibleFrame, panel), QRect(expected, size));
    }

    void whereverThePanelIsTheWindowIsInSightAndCoveredOnlyWhereThereIsNoRoom()
    {
        const QSize panelSize(344, 500);
        for (int x = 0; x <= screen.width() - panelSize.width(); x += 8) {
            for (int y = 0; y <= screen.height() - panelSize.height(); y += 10) {
                const QRect panel(QPoint(x, y), panelSize);
                const QRect window = besidePanel(size, screen, panel);
                QVERIFY(screen.contains(window));
                // Left and right of it there are 856 pixels in all.
                const bool isRoom = x >= 412 || screen.width() - x - panelSize.width() >= 412;
                QCOMPARE(window.intersects(panel), !isRoom);
            }
        }
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::CompanionPlaceTest)
#include "companion_place_test.moc"
