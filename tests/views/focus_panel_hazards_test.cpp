// SPDX-License-Identifier: MIT
#include "support/offscreen_silence.h"
#include "support/test_case.h"
#include "views/panel_in_window.h"

#include <QLineEdit>
#include <QMenu>

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");

void focusRow(PanelInWindow &panel, const QString &title)
{
    panel.row(title)->setFocus(Qt::TabFocusReason);
}

/// Two presses with nothing in between, as they come when the program was busy.
void pressTwiceAtOnce(Qt::Key key)
{
    for (int i = 0; i < 2; ++i) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &press);
    }
}

} // namespace

/// What must not happen when keys, lists and windows meet at a bad moment.
class FocusPanelHazardsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aPanelThatGoesWhileARowsMenuIsOpenDoesNoHarm()
    {
        const OffscreenSilence silence;
        auto panel = std::make_unique<PanelInWindow>(TaskList{madeTask(a)});
        QVERIFY(panel->show());
        focusRow(*panel, a);
        QWidget *row = panel->row(a);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), row->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(row, &event);
        QVERIFY(row->findChild<QMenu *>()->isVisible());
        panel.reset();
        QVERIFY(!QApplication::focusWidget());
    }

    void aKeyHeldDownActsOnce()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        focusRow(panel, a);
        panel.press(Qt::Key_Space);
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &repeat);
        QVERIFY(panel.fakes.task(a).isDone);
        QVERIFY(!panel.fakes.task(b).isDone);
    }

    void aKeyWithModifiersIsNoKeyOfTheRow_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Ctrl+Space") << Qt::Key_Space;
        QTest::newRow("Ctrl+Delete") << Qt::Key_Delete;
        QTest::newRow("Ctrl+F2") << Qt::Key_F2;
    }

    void aKeyWithModifiersIsNoKeyOfTheRow()
    {
        QFETCH(Qt::Key, key);
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        focusRow(panel, a);
        QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier);
        QCOMPARE(panel.fakes.titles(), a);
        QVERIFY(!panel.fakes.task(a).isDone);
        QVERIFY(panel.row(a)->hasFocus());
    }

    void keysThatComeInOneBurstActOnOneRowEach()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        focusRow(panel, a);
        pressTwiceAtOnce(Qt::Key_Space);
        QVERIFY(panel.fakes.task(a).isDone);
        QVERIFY(panel.fakes.task(b).isDone);
    }

    void theSubtaskFieldIsThereBeforeTheNextKey()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        focusRow(panel, a);
        QKeyEvent insert(QEvent::KeyPress, Qt::Key_Insert, Qt::NoModifier);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &insert);
        QVERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
    }

    void aHalfTypedTitleDoesNotGoOverToAnotherTask()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        panel.store.addTask(b, false);
        focusRow(panel, b);
        panel.press(Qt::Key_F2);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("wrong"));
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        panel.store.undo(); // b goes; no focus leaves a field of a window that is not in front.
        panel.store.addTask(QStringLiteral("new"), false);
        QVERIFY(panel.row(QStringLiteral("new")));
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a new"));
        for (const QLineEdit *field : panel.window.findChildren<QLineEdit *>())
            QVERIFY(!field->isVisible() || field->text().isEmpty());
    }

    void hidingThePanelCommitsWhatIsEditedEvenWhileAnotherWindowIsActive_data()
    {
        QTest::addColumn<bool>("isActive");
        QTest::newRow("active") << true;
        QTest::newRow("another window is") << false;
    }

    void hidingThePanelCommitsWhatIsEditedEvenWhileAnotherWindowIsActive()
    {
        QFETCH(bool, isActive);
        const OffscreenSilence silence;
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QWidget other;
        const auto goAwayAndComeBack = [&] {
            if (!isActive) {
                other.show();
                other.activateWindow();
                QVERIFY(QTest::qWaitForWindowActive(&other));
            }
            panel.window.hide();
            panel.window.show();
            panel.window.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&panel.window));
            QCOMPARE(panel.focused(), QStringLiteral("-"));
        };
        QVERIFY(panel.show());
        focusRow(panel, a);
        panel.press(Qt::Key_F2);
        type(panel.editField(), QStringLiteral("renamed"));
        goAwayAndComeBack();
        QVERIFY(!panel.editField());
        QVERIFY(panel.row(QStringLiteral("renamed")));

        QTest::mouseClick(panel.goal(), Qt::LeftButton);
        type(panel.editField(), QStringLiteral("goal"));
        goAwayAndComeBack();
        QVERIFY(!panel.editField());
        QCOMPARE(panel.store.mediumGoal.value(), QStringLiteral("goal"));

        focusRow(panel, b);
        panel.press(Qt::Key_Insert);
        type(panel.subtaskField(), QStringLiteral("subtask"));
        goAwayAndComeBack();
        QCOMPARE(panel.fakes.task(QStringLiteral("subtask")).parentID, panel.fakes.task(b).id);
    }

    void hidingThePanelKeepsTheDraftOfANewTask()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        panel.composer()->setFocus();
        type(panel.composer(), QStringLiteral("draft"));
        panel.window.hide();
        panel.window.show();
        QCOMPARE(panel.composer()->text(), QStringLiteral("draft"));
        QCOMPARE(panel.store.tasks.value().size(), 1);
    }

    void anOpenSubtaskOfACompletedTaskIsShownUnderIt()
    {
        const TaskItem parent = madeTask(a);
        PanelInWindow panel({done(parent), madeSubtask(b, parent)});
        panel.store.isCompletedSectionExpanded.set(true);
        QVERIFY(panel.show());
        QVERIFY(panel.row(a, Kind::CompletedTask)->y() < panel.row(b)->y());
        QVERIFY(panel.clickIn(panel.row(b), QStringLiteral("完了")));
        QVERIFY(panel.fakes.task(b).isDone);
    }

    void whileAnInputMethodComposesReturnAndEscapeAreItsOwn()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        const auto compose = [](QWidget *field, const QString &text) {
            QInputMethodEvent event(text, {});
            QCoreApplication::sendEvent(field, &event);
        };
        panel.composer()->setFocus(Qt::TabFocusReason);
        type(panel.composer(), b);
        compose(panel.composer(), QStringLiteral("かな"));
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.titles(), a);
        compose(panel.composer(), {});
        type(panel.composer(), QStringLiteral("仮名"));
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b仮名"));

        panel.row(a)->setFocus(Qt::TabFocusReason);
        panel.press(Qt::Key_F2);
        compose(panel.editField(), QStringLiteral("かな"));
        panel.press(Qt::Key_Escape);
        QVERIFY(panel.editField());
        panel.press(Qt::Key_Return);
        QVERIFY(panel.editField());
        compose(panel.editField(), {});
        panel.press(Qt::Key_Escape);
        QVERIFY(!panel.editField());

        panel.row(a)->setFocus(Qt::TabFocusReason);
        panel.press(Qt::Key_Insert);
        type(panel.subtaskField(), c);
        compose(panel.subtaskField(), QStringLiteral("かな"));
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b仮名"));
    }

    void aTaskAddedBelowWhatIsInSightIsScrolledTo()
    {
        TaskList tasks;
        for (int i = 0; i < 50; ++i)
            tasks.append(madeTask(QString::number(i)));
        PanelInWindow panel(tasks);
        QVERIFY(panel.show());
        panel.composer()->setFocus();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("new"));
        panel.press(Qt::Key_Return);
        const PanelRowWidget *row = panel.row(QStringLiteral("new"));
        QVERIFY(row);
        QVERIFY(!row->visibleRegion().isEmpty());
    }

    void aFieldsMenuIsOurs()
    {
        const OffscreenSilence silence;
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        panel.composer()->setFocus();
        QWidget *field = QApplication::focusWidget();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), field->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(field, &event);
        const QMenu *menu = panel.window.findChild<QMenu *>();
        QVERIFY(menu);
        QStringList texts;
        for (const QAction *action : menu->actions())
            texts.append(action->text());
        QCOMPARE(texts.join(QLatin1Char('|')),
                 QStringLiteral("元に戻す|やり直す||切り取り|コピー|貼り付け|すべて選択"));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelHazardsTest)
#include "focus_panel_hazards_test.moc"
