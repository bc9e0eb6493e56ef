// SPDX-License-Identifier: MIT
#include "look/check_circle.h"
#include "look/icon_button.h"
#include "look/text_field.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"
#include "views/row_in_window.h"
#include "views/task_row.h"

namespace wrenfold {

namespace {

const QString pinHelp = QStringLiteral("NOWにピン留め");
const QString pinnedHelp = QStringLiteral("NOWにピン留め中");
const QString titleHelp = QStringLiteral("クリックでNOWにピン留め");
const QString addSubtaskHelp = QStringLiteral("サブタスクを手動追加");
const QString splitHelp = QStringLiteral("AIでサブタスクに分割");
const QString deleteHelp = QStringLiteral("削除（元に戻せます）");

struct TaskRowInWindow : RowInWindow<TaskRow>
{
    TaskRowInWindow()
    {
        const auto note = [this](const char *what) {
            return [this, what](const TaskItem &task) {
                calls.append(QLatin1String(what) + QLatin1Char(' ') + task.title);
            };
        };
        row =
            new TaskRow({note("done"), note("now"), note("fold"),
                         [this](const TaskItem &task, const QString &title) {
                             calls.append(QStringLiteral("rename %1 to %2").arg(task.title, title));
                         },
                         note("subtask"), note("split"),
                         [this](const TaskItem &task, TaskQuadrant quadrant) {
                             calls.append(QStringLiteral("defer %1 to %2").arg(task.title, label(quadrant)));
                         },
                         note("delete"),
                         [this](const TaskItem &task, int step) {
                             calls.append(QStringLiteral("move %1 by %2").arg(task.title).arg(step));
                         }},
                        &window);
    }

    [[nodiscard]] TextField *field() const { return shown<TextField>(window).value(0); }
};

PanelRow rowOf(const QString &title)
{
    PanelRow row;
    row.task = madeTask(title);
    return row;
}

PanelRow task()
{
    PanelRow row = rowOf(QStringLiteral("a"));
    row.canSplit = true;
    return row;
}

PanelRow activeTask()
{
    PanelRow row = task();
    row.isActive = true;
    return row;
}

PanelRow parentTask(bool isExpanded)
{
    PanelRow row = task();
    row.childCount = 2;
    row.isExpanded = isExpanded;
    return row;
}

PanelRow subtask()
{
    PanelRow row = task();
    row.isSubtask = true;
    row.task.parentID = QUuid::createUuid();
    row.subtaskNumber = 2;
    row.subtaskTotal = 3;
    return row;
}

} // namespace

class TaskRowTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsReachedByMouse()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(parentTask(false)));
        enter(*shownRow.row);
        QVERIFY(click(*shownRow.row, QStringLiteral("完了")));
        QVERIFY(click(*shownRow.row, pinHelp));
        QVERIFY(click(*shownRow.row, QStringLiteral("サブタスクを表示")));
        QVERIFY(click(*shownRow.row, addSubtaskHelp));
        QVERIFY(click(*shownRow.row, splitHelp));
        QVERIFY(click(*shownRow.row, deleteHelp));
        QTest::mouseClick(labelSaying(*shownRow.row, QStringLiteral("a")), Qt::LeftButton);
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("done a,now a,fold a,subtask a,split a,delete a,now a"));
    }

    void everyControlIsReachedByKey()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(parentTask(false)));
        shownRow.row->setFocus(Qt::TabFocusReason);
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_P, Qt::Key_Right, Qt::Key_Insert, Qt::Key_Delete})
            QTest::keyClick(shownRow.row, key);
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("done a,now a,fold a,subtask a,delete a"));
        for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Return, Qt::Key_Enter}) {
            QTest::keyClick(shownRow.row, key);
            QVERIFY(shownRow.field());
            QTest::keyClick(shownRow.field(), Qt::Key_Escape);
            QVERIFY(!shownRow.field());
        }
    }

    void theKeyPPins()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QTest::keyClick(shownRow.row, Qt::Key_P);
        QTest::keyClick(shownRow.row, Qt::Key_P, Qt::ControlModifier);
        QCOMPARE(shownRow.calls, QStringList(QStringLiteral("now a")));
    }

    void altWithAnArrowMovesATaskButNoSubtask()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        shownRow.row->setFocus(Qt::TabFocusReason);
        QTest::keyClick(shownRow.row, Qt::Key_Down, Qt::AltModifier);
        QTest::keyClick(shownRow.row, Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(shownRow.calls,
                 (QStringList{QStringLiteral("move a by 1"), QStringLiteral("move a by -1")}));
        PanelRow subtask = task();
        subtask.isSubtask = true;
        shownRow.row->setRow(subtask);
        QTest::keyClick(shownRow.row, Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(shownRow.calls.size(), 2);
    }

    void leftAndRightFoldOnlyWhereThereIsSomethingToFold()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(parentTask(false)));
        QTest::keyClick(shownRow.row, Qt::Key_Left);
        QCOMPARE(shownRow.calls, QStringList());
        shownRow.row->setRow(parentTask(true));
        QTest::keyClick(shownRow.row, Qt::Key_Right);
        QCOMPARE(shownRow.calls, QStringList());
        QTest::keyClick(shownRow.row, Qt::Key_Left);
        QCOMPARE(shownRow.calls, QStringList(QStringLiteral("fold a")));
        shownRow.row->setRow(task());
        QTest::keyClick(shownRow.row, Qt::Key_Right);
        QCOMPARE(shownRow.calls.size(), 1);
    }

    void theActiveRowsPinReadsPinnedAndTheOthersPin()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(activeTask()));
        auto *pin = qobject_cast<IconButton *>(buttonNamed(*shownRow.row, pinnedHelp));
        QVERIFY(pin);
        QCOMPARE(pin->symbol(), QStringLiteral("pin.fill"));
        QVERIFY(!buttonNamed(*shownRow.row, pinHelp));

        shownRow.row->setRow(task());
        enter(*shownRow.row);
        QCOMPARE(accessibleName(*pin), pinHelp);
        QCOMPARE(pin->symbol(), QStringLiteral("pin"));
        QVERIFY(!buttonNamed(*shownRow.row, pinnedHelp));
    }

    void theTitleSaysWhatAClickDoes()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QCOMPARE(shownToolTip(*labelSaying(*shownRow.row, QStringLiteral("a"))), plainToolTip(titleHelp));
        shownRow.row->setRow(activeTask());
        QVERIFY(showsNoToolTip(*labelSaying(*shownRow.row, QStringLiteral("a"))));
    }

    void theActionsAppearOnHoverWithoutMovingTheTitle()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        const auto titleLeft = [&shownRow] {
            return labelSaying(*shownRow.row, QStringLiteral("a"))->mapTo(shownRow.row, QPoint()).x();
        };
        const int left = titleLeft();
        QCOMPARE(shown<IconButton>(*shownRow.row).size(), 0);
        enter(*shownRow.row);
        QVERIFY(buttonNamed(*shownRow.row, addSubtaskHelp));
        QVERIFY(buttonNamed(*shownRow.row, deleteHelp));
        QVERIFY(buttonNamed(*shownRow.row, pinHelp));
        QCOMPARE(titleLeft(), left);
        leave(*shownRow.row);
        QCOMPARE(shown<IconButton>(*shownRow.row).size(), 0);
        QCOMPARE(titleLeft(), left);
    }

    void theActionsAppearOnFocusWithoutMovingTheTitle()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(activeTask()));
        TextLabel *title = labelSaying(*shownRow.row, QStringLiteral("a"));
        const QPoint place = title->mapTo(shownRow.row, QPoint());
        QVERIFY(!buttonNamed(*shownRow.row, deleteHelp));
        shownRow.row->setFocus(Qt::TabFocusReason);
        QVERIFY(buttonNamed(*shownRow.row, deleteHelp));
        QCOMPARE(title->mapTo(shownRow.row, QPoint()), place);
        shownRow.row->clearFocus();
        QVERIFY(!buttonNamed(*shownRow.row, deleteHelp));
    }

    void aTitleNeverReachesUnderTheActions()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(QString(200, QChar(u'長')))));
        enter(*shownRow.row);
        TextLabel *title = shown<TextLabel>(*shownRow.row).value(0);
        const int right = title->mapTo(shownRow.row, QPoint(title->width(), 0)).x();
        for (IconButton *button : shown<IconButton>(*shownRow.row)) {
            const bool isHandle = shownRow.row->isHandle(*button); // Stands in front of the title.
            QVERIFY(isHandle ? button->geometry().right() < title->mapTo(shownRow.row, QPoint()).x()
                             : button->x() >= right);
        }
    }

    void aSubtaskShowsItsNumber()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(subtask()));
        QVERIFY(labelSaying(*shownRow.row, QStringLiteral("2/3")));
        shownRow.row->setRow(task());
        QVERIFY(!labelSaying(*shownRow.row, QStringLiteral("2/3")));
    }

    void aDoneSubtaskIsReopenedAndCannotBecomeNow()
    {
        TaskRowInWindow shownRow;
        PanelRow row = subtask();
        row.task = done(row.task);
        QVERIFY(shownRow.show(row));
        enter(*shownRow.row);
        QVERIFY(!buttonNamed(*shownRow.row, pinHelp));
        QVERIFY(shown<CheckCircle>(*shownRow.row).value(0)->isChecked());
        QVERIFY(click(*shownRow.row, QStringLiteral("未完了に戻す")));
        QCOMPARE(shownRow.calls, QStringList(QStringLiteral("done a")));
    }

    void aTitleIsShownAndReadExactly_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("markup and mnemonics") << awkward();
        QTest::newRow("Japanese") << QStringLiteral("四半期の予算案を確認する");
        QTest::newRow("emoji") << QStringLiteral("👨‍👩‍👧‍👦 と 🇯🇵 へ");
    }

    void aTitleIsShownAndReadExactly()
    {
        QFETCH(QString, title);
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(title)));
        QCOMPARE(paintedText(*shownRow.row), title);
        QCOMPARE(accessibleName(*shownRow.row), title);
        QVERIFY(labelSaying(*shownRow.row, title));
        shownRow.row->rename();
        QCOMPARE(shownRow.field()->text(), title);
    }

    void anElidedTitleIsReadWholeAndItsToolTipIsWhole()
    {
        const QString title =
            QStringLiteral("四半期の予算案を確認する👨‍👩‍👧‍👦").repeated(30) +
            awkward();
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(title)));
        TextLabel *label = labelSaying(*shownRow.row, title);
        QVERIFY(label && label->isElided());
        QVERIFY(paintedText(*shownRow.row).endsWith(QChar(0x2026)));
        QCOMPARE(accessibleName(*shownRow.row), title);
        QCOMPARE(shownToolTip(*label), plainToolTip(title + QLatin1Char('\n') + titleHelp));
    }

    void theRowIsAListItemToAssistiveTechnology()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(parentTask(true)));
        QCOMPARE(roleOf(*shownRow.row), QAccessible::ListItem);
        QVERIFY(QAccessible::queryAccessibleInterface(shownRow.row)->state().expanded);
        shownRow.row->setRow(parentTask(false));
        QVERIFY(QAccessible::queryAccessibleInterface(shownRow.row)->state().collapsed);
        shownRow.row->setRow(task());
        QVERIFY(!QAccessible::queryAccessibleInterface(shownRow.row)->state().expandable);
    }

    void everyButtonCanBeHitAndIsNamed_data()
    {
        QTest::addColumn<PanelRow>("row");
        QTest::newRow("task") << task();
        QTest::newRow("active task") << activeTask();
        QTest::newRow("parent") << parentTask(true);
        QTest::newRow("subtask") << subtask();
    }

    void everyButtonCanBeHitAndIsNamed()
    {
        QFETCH(PanelRow, row);
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(row));
        enter(*shownRow.row);
        QVERIFY(shown<PaintedButton>(*shownRow.row).size() >= 4);
        QCOMPARE(faultsOfButtons(*shownRow.row), QStringList());
    }

    void theMenuHoldsEverything()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QMenu *menu = openMenu(*shownRow.row, QContextMenuEvent::Keyboard);
        QVERIFY(menu);
        QCOMPARE(
            menuTexts(*menu).join(QLatin1Char(',')),
            QStringLiteral(
                "完了,NOWにピン留め,名前を変更,サブタスクを追加,AIでサブタスクに分割,あとでやる,緊急 × 重要,"
                "重要 × 緊急ではない,緊急 × 重要ではない,緊急でも重要でもない,-,"
                "削除（元に戻せます）"));
        menu->close();
    }

    void theMenuDoesWhatItSays()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        for (const char *entry : {"完了", "NOWにピン留め", "サブタスクを追加", "AIでサブタスクに分割",
                                  "重要 × 緊急ではない", "削除（元に戻せます）"})
            QVERIFY(chooseFromMenu(*shownRow.row, QString::fromUtf8(entry)));
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("done a,now a,subtask a,split a,defer a to 重要 × 緊急ではない,delete a"));
        QVERIFY(chooseFromMenu(*shownRow.row, QStringLiteral("名前を変更")));
        QVERIFY(shownRow.field());
    }

    void whileTheAIWorksThereIsNothingToSplit()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        enter(*shownRow.row);
        QVERIFY(buttonNamed(*shownRow.row, splitHelp)->isEnabled());
        PanelRow busy = task();
        busy.task = shownRow.row->row().task;
        busy.canSplit = false;
        shownRow.row->setRow(busy);
        QVERIFY(!buttonNamed(*shownRow.row, splitHelp)->isEnabled());
        QMenu *menu = openMenu(*shownRow.row);
        QVERIFY(!menuEntry(*menu, splitHelp)->isEnabled());
        menu->close();
    }

    void theMenuActsOnTheTaskItWasOpenedFor()
    {
        TaskRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QMenu *menu = openMenu(*shownRow.row);
        QVERIFY(menu);
        shownRow.row->setRow(rowOf(QStringLiteral("other")));
        menuEntry(*menu, deleteHelp)->trigger();
        menuEntry(*menu, QStringLiteral("名前を変更"))->trigger();
        menu->close();
        QCOMPARE(shownRow.calls, QStringList(QStringLiteral("delete a")));
        QVERIFY(!shownRow.field());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::TaskRowTest)
#include "task_row_test.moc"
