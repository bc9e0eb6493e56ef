// SPDX-License-Identifier: MIT
#include "shell/focus_panel.h"
#include "support/fake_panel_window.h"
#include "support/offscreen_silence.h"
#include "support/test_case.h"

#include <QWindow>

namespace wrenfold {

class FocusPanelTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void thePanelHasItsTitleAndItsSize()
    {
        const OffscreenSilence silence;
        FakePanelWindow ability;
        const FocusPanel panel(ability);
        QCOMPARE(panel.windowTitle(), QStringLiteral("Wren Fold"));
        QCOMPARE(panel.size(), QSize(344, 500));
        QCOMPARE(panel.minimumSize(), QSize(344, 250));
        QCOMPARE(panel.maximumSize(), QSize(760, 760));
    }

    void theWindowHasTheFlagsOfTheDesktop()
    {
        const OffscreenSilence silence;
        FakePanelWindow ability;
        const FocusPanel panel(ability);
        QCOMPARE(panel.windowFlags() & ability.flags(), ability.flags());
    }

    void theSizeStaysWithinItsBounds()
    {
        const OffscreenSilence silence;
        FakePanelWindow ability;
        FocusPanel panel(ability);
        panel.resize(100, 100);
        QCOMPARE(panel.size(), QSize(344, 250));
        panel.resize(2000, 2000);
        QCOMPARE(panel.size(), QSize(760, 760));
    }

    void closingHidesThePanel()
    {
        const OffscreenSilence silence;
        FakePanelWindow ability;
        FocusPanel panel(ability);
        panel.show();
        QVERIFY(!panel.close());
        QVERIFY(!panel.isVisible());
        panel.show();
        QVERIFY(panel.isVisible());
    }

    void thePanelIsPinnedEachTimeItIsShownAndWhenItsLevelChangesMeanwhile()
    {
        using Pins = QList<FakePanelWindow::Pinned>;
        const OffscreenSilence silence;
        FakePanelWindow ability;
        FocusPanel panel(ability);
        panel.setLevel(PanelLevel::AboveFullScreen);
        QCOMPARE(ability.takePinned(), Pins());
        panel.show();
        QWindow *window = panel.windowHandle();
        QCOMPARE(ability.takePinned(), Pins({{window, PanelLevel::AboveFullScreen}}));
        panel.setLevel(PanelLevel::Floating);
        QCOMPARE(ability.takePinned(), Pins({{window, PanelLevel::Floating}}));
        panel.hide();
        panel.setLevel(PanelLevel::AboveFullScreen);
        QCOMPARE(ability.takePinned(), Pins());
        panel.show();
        QCOMPARE(ability.takePinned(), Pins({{window, PanelLevel::AboveFullScreen}}));
    }

    void theContentFillsThePanel()
    {
        const OffscreenSilence silence;
        FakePanelWindow ability;
        FocusPanel panel(ability);
        auto *content = new QWidget;
        panel.setContent(content);
        QCOMPARE(content->geometry(), QRect(0, 0, 344, 500));
        panel.show();
        panel.resize(400, 300);
        QCOMPARE(content->geometry(), QRect(0, 0, 400, 300));
    }

    void theCornersAreCutOffWhileThePanelCannotBeSeenThrough()
    {
        const OffscreenSilence silence;
        FakePanelWindow ability;
        FocusPanel panel(ability);
        panel.show();
        QVERIFY(!panel.mask().contains(QPoint(0, 0)));
        QVERIFY(panel.mask().contains(QPoint(172, 0)));
        QVERIFY(panel.mask().contains(QPoint(172, 499)));
        panel.resize(344, 400);
        QVERIFY(!panel.mask().contains(QPoint(0, 399)));
        QVERIFY(panel.mask().contains(QPoint(172, 399)));

        panel.setTranslucent(true);
        QVERIFY(panel.mask().isEmpty());
        panel.resize(344, 500);
        QVERIFY(panel.mask().isEmpty());

        panel.setTranslucent(false);
        QVERIFY(!panel.mask().contains(QPoint(0, 0)));
        QVERIFY(panel.mask().contains(QPoint(172, 499)));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelTest)
#include "focus_panel_test.moc"
