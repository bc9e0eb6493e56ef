// SPDX-License-Identifier: MIT
#include "look/text_field.h"
#include "shell/panel_controller.h"
#include "support/fake_panel_window.h"
#include "support/log_capture.h"
#include "support/test_case.h"
#include "views/editable_label.h"
#include "views/focus_panel_view.h"
#include "views/menu_probes.h"
#include "views/now_card.h"
#include "views/todo_composer.h"
#include "views/view_probes.h"

#include <QScreen>

#include <QWindow>

namespace wrenfold {

namespace {

struct ControllerOnFakes
{
    OffscreenSilence silence;
    StoreOnFakes fakes{TaskList{madeTask(QStringLiteral("a"))}};
    FakePanelWindow ability;
    QList<QPoint> menus;
    PanelController controller{fakes.store,
                               fakes.clock,
                               ability,
                               {.showAppMenu = [this](const QPoint &position) { menus.append(position); },
                                .openSettings = {},
                                .openAIChat = {},
                                .openLink = {}}};

    [[nodiscard]] FocusPanel &panel() { return controller.panel(); }
    [[nodiscard]] FocusPanelView *view() { return panel().findChild<FocusPanelView *>(); }
    [[nodiscard]] TextField *composer()
    {
        return panel().findChild<TodoComposer *>()->findChild<TextField *>();
    }

    void show() { controller.showAndPin(); }
};

} // namespace

class PanelControllerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void thePanelIsHiddenUntilItIsShown()
    {
        ControllerOnFakes fakes;
        QVERIFY(!fakes.panel().isVisible());
        fakes.show();
        QVERIFY(fakes.panel().isVisible());
        QVERIFY(QTest::qWaitForWindowActive(&fakes.panel()));
        fakes.controller.hide();
        QVERIFY(!fakes.panel().isVisible());
    }

    void shownAgainItIsActiveAgain()
    {
        ControllerOnFakes fakes;
        fakes.show();
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        fakes.show();
        QVERIFY(QTest::qWaitForWindowActive(&fakes.panel()));
    }

    void theContentFillsThePanel()
    {
        ControllerOnFakes fakes;
        QCOMPARE(fakes.view()->geometry(), fakes.panel().rect());
    }

    void thePanelStartsInTheMiddleOfTheScreen()
    {
        ControllerOnFakes fakes;
        const QPoint middle = QGuiApplication::primaryScreen()->availableGeometry().center();
        QVERIFY((fakes.panel().frameGeometry().center() - middle).manhattanLength() <= 2);
    }

    void noFieldHasTheCaretAtStart()
    {
        ControllerOnFakes fakes;
        fakes.show();
        QVERIFY(QTest::qWaitForWindowActive(&fakes.panel()));
        QVERIFY(fakes.view()->hasFocus());
    }

    void aRequestForInputShowsThePanelWithTheCaretInTheField()
    {
        ControllerOnFakes fakes;
        fakes.fakes.store.requestTodoInput();
        QVERIFY(fakes.panel().isVisible());
        QVERIFY(QTest::qWaitForWindowActive(&fakes.panel()));
        QVERIFY(fakes.composer()->hasFocus());
        fakes.controller.hide();
        fakes.fakes.store.requestTodoInput();
        QVERIFY(fakes.panel().isVisible());
    }

    void theHeadersButtonHidesThePanel()
    {
        ControllerOnFakes fakes;
        fakes.show();
        QVERIFY(click(fakes.panel(), QStringLiteral("パネルを隠す")));
        QVERIFY(!fakes.panel().isVisible());
    }

    void theMenuIsAskedForWhereTheButtonWasPressed()
    {
        ControllerOnFakes fakes;
        fakes.show();
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(105, 205));
        QCoreApplication::sendEvent(fakes.view(), &event);
        QCOMPARE(fakes.menus, QList<QPoint>({QPoint(105, 205)}));
    }

    void theSizeFollowsTheListAndTheBoard()
    {
        ControllerOnFakes fakes;
        fakes.show();
        FocusStore &store = fakes.fakes.store;
        const QPoint place = fakes.panel().pos();
        QCOMPARE(fakes.panel().size(), QSize(344, 500));
        store.isTodoListHidden.set(true);
        QCOMPARE(fakes.panel().size(), QSize(344, 268));
        store.isQuadrantDropActive.set(true);
        QCOMPARE(fakes.panel().size(), QSize(716, 500));
        store.isQuadrantBoardVisible.set(true);
        store.isQuadrantDropActive.set(false);
        QCOMPARE(fakes.panel().size(), QSize(716, 500));
        store.isQuadrantBoardVisible.set(false);
        store.isTodoListHidden.set(false);
        QCOMPARE(fakes.panel().geometry(), QRect(place, QSize(344, 500)));
    }

    void aWidePanelThatWasMovedGoesBackToWhereItWasOpened()
    {
        ControllerOnFakes fakes;
        fakes.show();
        fakes.panel().move(60, 100);
        fakes.fakes.store.isQuadrantBoardVisible.set(true);
        QCOMPARE(fakes.panel().geometry(), QRect(60, 100, 716, 500));
        fakes.panel().move(20, 150);
        fakes.fakes.store.isQuadrantBoardVisible.set(false);
        QCOMPARE(fakes.panel().geometry(), QRect(60, 150, 344, 500));
    }

    void whatIsSavedAsFoldedStartsFolded()
    {
        SavedState state;
        state.isTodoListHidden = true;
        StoreOnFakes fakes(encodeSavedState(state));
        FakePanelWindow ability;
        PanelController controller(fakes.store, fakes.clock, ability, {});
        QCOMPARE(controller.panel().size(), QSize(344, 268));
    }

    void ghostModeLetsClicksThroughUntilThePanelIsShown()
    {
        ControllerOnFakes fakes;
        fakes.show();
        const auto isClickThrough = [&fakes] {
            return fakes.panel().windowHandle()->flags().testFlag(Qt::WindowTransparentForInput);
        };
        QVERIFY(!isClickThrough());
        fakes.fakes.store.isGhostMode.set(true);
        QVERIFY(isClickThrough());
        fakes.controller.hide();
        fakes.show();
        QVERIFY(!isClickThrough());
        QVERIFY(!fakes.fakes.store.isGhostMode.value());
    }

    void leavingGhostModeIsLoggedOnceAndNotAtAllWhenItIsOff()
    {
        StoreOnFakes fakes{TaskList{}};
        LogCapture log;
        fakes.store.exitGhostMode();
        QCOMPARE(log.take(), QStringList());
        fakes.store.isGhostMode.set(true);
        fakes.store.exitGhostMode();
        fakes.store.exitGhostMode();
        QCOMPARE(log.take(), QStringList{QStringLiteral("info ui: exited ghost mode")});
    }

    void comingIntoSightLeavesGhostModeAndTheFocusWhereItIs()
    {
        ControllerOnFakes fakes;
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        fakes.fakes.store.isGhostMode.set(true);
        fakes.controller.showWithoutFocus();
        QVERIFY(fakes.panel().isVisible());
        QVERIFY(!fakes.fakes.store.isGhostMode.value());
        QVERIFY(other.isActiveWindow());
    }

    void theCornersFollowTheCompositor()
    {
        ControllerOnFakes fakes;
        fakes.show();
        fakes.fakes.store.requestTodoInput();
        QTRY_VERIFY(fakes.composer()->hasFocus());
        type(fakes.composer(), QStringLiteral("draft"));
        const auto corner = [&fakes] {
            QImage image(fakes.panel().size(), QImage::Format_ARGB32);
            image.fill(Qt::transparent);
            fakes.view()->render(&image, {}, {}, QWidget::DrawChildren);
            return image.pixelColor(0, 0).alpha();
        };
        QCOMPARE(corner(), 0);
        QVERIFY(fakes.panel().mask().isEmpty());
        fakes.ability.setTranslucencyAvailable(false);
        QCOMPARE(corner(), 255);
        QVERIFY(!fakes.panel().mask().isEmpty());
        fakes.ability.setTranslucencyAvailable(true);
        QCOMPARE(corner(), 0);
        QVERIFY(fakes.panel().mask().isEmpty());
        QVERIFY(fakes.composer()->hasFocus());
        QCOMPARE(fakes.composer()->text(), QStringLiteral("draft"));
    }

    void aCompositorThatComesAfterTheControllerHasGoneIsNoMatter()
    {
        FakePanelWindow ability;
        {
            StoreOnFakes fakes{TaskList{}};
            const PanelController controller(fakes.store, fakes.clock, ability, {});
        }
        ability.setTranslucencyAvailable(true);
    }

    void theLevelFollowsTheHardPinOnTheNextTurn()
    {
        using Pins = QList<FakePanelWindow::Pinned>;
        ControllerOnFakes fakes;
        Setting<bool> &isHardPinned = fakes.fakes.store.isHardPinned;
        QVERIFY(isHardPinned.value());
        fakes.show();
        QWindow *window = fakes.panel().windowHandle();
        QCOMPARE(fakes.ability.takePinned().last(),
                 (FakePanelWindow::Pinned{window, PanelLevel::AboveFullScreen}));
        QCoreApplication::processEvents();
        (void)fakes.ability.takePinned();
        isHardPinned.set(false);
        QCOMPARE(fakes.ability.takePinned(), Pins());
        QCoreApplication::processEvents();
        QCOMPARE(fakes.ability.takePinned(), Pins({{window, PanelLevel::Floating}}));
        isHardPinned.set(true);
        QCoreApplication::processEvents();
        QCOMPARE(fakes.ability.takePinned(), Pins({{window, PanelLevel::AboveFullScreen}}));
    }

    void showingAppliesTheLevelAgainAlsoToAPanelInSight()
    {
        ControllerOnFakes fakes;
        fakes.fakes.store.isHardPinned.set(false);
        for (int time = 0; time < 2; ++time) {
            (void)fakes.ability.takePinned();
            fakes.show();
            QCOMPARE(fakes.ability.takePinned(),
                     QList<FakePanelWindow::Pinned>({{fakes.panel().windowHandle(), PanelLevel::Floating}}));
            QVERIFY(fakes.panel().isVisible());
        }
    }

    void hidingByTheControllerAndClosingEndAnyEditing_data()
    {
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("hidden") << false;
        QTest::newRow("closed") << true;
    }

    void hidingByTheControllerAndClosingEndAnyEditing()
    {
        QFETCH(bool, isClosed);
        ControllerOnFakes fakes;
        fakes.show();
        EditableLabel *goal = fakes.panel().findChild<NowCard *>()->findChild<EditableLabel *>();
        goal->beginEditing();
        type(goal->findChild<TextField *>(), QStringLiteral("goal"));
        if (isClosed)
            fakes.panel().close();
        else
            fakes.controller.hide();
        QCOMPARE(fakes.fakes.store.mediumGoal.value(), QStringLiteral("goal"));
        QVERIFY(!goal->isEditing());
        fakes.controller.showWithoutFocus();
        QCOMPARE(fakes.panel().focusWidget(), fakes.view());
    }

    void typingKeptInTheFieldSurvivesHiding()
    {
        ControllerOnFakes fakes;
        fakes.show();
        type(fakes.composer(), QStringLiteral("draft"));
        fakes.controller.hide();
        fakes.show();
        QCOMPARE(fakes.composer()->text(), QStringLiteral("draft"));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::PanelControllerTest)
#include "panel_controller_test.moc"
