// SPDX-License-Identifier: MIT
#include "look/icon_button.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"
#include "views/deferred_task_row.h"
#include "views/row_in_window.h"

namespace wrenfold {

namespace {

const QString restoreHelp = QStringLiteral("TODOに戻す");
const QString quadrantHelp = QStringLiteral("4象限を変更");
const QString deleteHelp = QStringLiteral("削除（元に戻せます）");

struct DeferredRowInWindow : RowInWindow<DeferredTaskRow>
{
    DeferredRowInWindow()
    {
        const auto note = [this](const char *what) {
            return [this, what](const TaskItem &task) {
                calls.append(QLatin1String(what) + QLatin1Char(' ') + task.title);
            };
        };
        row = new DeferredTaskRow({note("restore"),
                                   [this](const TaskItem &task, TaskQuadrant quadrant) {
                                       calls.append(
                                           QStringLiteral("move %1 to %2").arg(task.title, label(quadrant)));
                                   },
                                   note("done"), note("delete")},
                                  &window);
    }
};

PanelRow rowOf(const QString &title, int childCount = 0)
{
    PanelRow row;
    row.kind = PanelRow::Kind::DeferredTask;
    row.task = deferred(madeTask(title));
    row.task.quadrant = TaskQuadrant::urgentImportant;
    row.childCount = childCount;
    return row;
}

PanelRow task()
{
    return rowOf(QStringLiteral("a"));
}

} // namespace

class DeferredTaskRowTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsReachedByMouse()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        enter(*shownRow.row);
        QVERIFY(click(*shownRow.row, restoreHelp));
        QVERIFY(click(*shownRow.row, QStringLiteral("完了")));
        QVERIFY(click(*shownRow.row, deleteHelp));
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')), QStringLiteral("restore a,done a,delete a"));
    }

    void everyControlIsReachedByKey()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Delete})
            QTest::keyClick(shownRow.row, key);
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("restore a,restore a,done a,delete a"));
    }

    void theQuadrantMenuListsTheFourWithTheCurrentOneTicked()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        enter(*shownRow.row);
        const OffscreenSilence silence;
        QVERIFY(click(*shownRow.row, quadrantHelp));
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menuTexts(*menu).join(QLatin1Char(',')),
                 QStringLiteral("緊急 × 重要,重要 × 緊急ではない,緊急 × 重要ではない,緊急でも重要でもない"));
        QList<bool> ticks;
        for (const QAction *action : menu->actions())
            ticks.append(action->isChecked());
        QCOMPARE(ticks, QList<bool>({true, false, false, false}));

        menu->actions().at(0)->trigger();
        QCOMPARE(shownRow.calls, QStringList());
        menu->actions().at(3)->trigger();
        menu->close();
        QCOMPARE(shownRow.calls, QStringList(QStringLiteral("move a to 緊急でも重要でもない")));
    }

    void theMenuHoldsEverythingAndDoesIt()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QMenu *menu = openMenu(*shownRow.row, QContextMenuEvent::Keyboard);
        QVERIFY(menu);
        QCOMPARE(menuTexts(*menu).join(QLatin1Char(',')),
                 QStringLiteral("TODOに戻す,完了,-,緊急 × 重要,重要 × 緊急ではない,緊急 × 重要ではない,"
                                "緊急でも重要でもない,-,削除（元に戻せます）"));
        menu->close();
        for (const QString &entry :
             {restoreHelp, QStringLiteral("完了"), QStringLiteral("緊急 × 重要ではない"), deleteHelp})
            QVERIFY(chooseFromMenu(*shownRow.row, entry));
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("restore a,done a,move a to 緊急 × 重要ではない,delete a"));
    }

    void subtasksThatWaitWithItAreCounted()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(QStringLiteral("a"), 3)));
        QVERIFY(labelSaying(*shownRow.row, QStringLiteral("サブタスク 3件も一緒に保留中")));
        shownRow.row->setRow(task());
        QCOMPARE(shown<TextLabel>(*shownRow.row).size(), 1);
    }

    void theActionsAppearWhenNeededWithoutMovingTheTitle()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        TextLabel *title = labelSaying(*shownRow.row, QStringLiteral("a"));
        const QPoint place = title->pos();
        QCOMPARE(shown<IconButton>(*shownRow.row).size(), 0);
        enter(*shownRow.row);
        QCOMPARE(shown<IconButton>(*shownRow.row).size(), 3);
        QCOMPARE(title->pos(), place);
        leave(*shownRow.row);
        QCOMPARE(shown<IconButton>(*shownRow.row).size(), 0);
        shownRow.row->setFocus(Qt::TabFocusReason);
        QCOMPARE(shown<IconButton>(*shownRow.row).size(), 3);
        QCOMPARE(title->pos(), place);
    }

    void theTitleIsShownAndReadExactly()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(awkward())));
        QCOMPARE(paintedText(*shownRow.row), awkward());
        QCOMPARE(accessibleName(*shownRow.row), awkward());
        QVERIFY(labelSaying(*shownRow.row, awkward()));
    }

    void anElidedTitleIsReadWhole()
    {
        const QString title = QStringLiteral("請求書を送る🧾").repeated(40);
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(title)));
        QCOMPARE(accessibleName(*shownRow.row), title);
        TextLabel *label = labelSaying(*shownRow.row, title);
        QVERIFY(label && label->isElided());
        QCOMPARE(shownToolTip(*label), plainToolTip(title));
    }

    void assistiveTechnologyHearsTheQuadrant()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QCOMPARE(roleOf(*shownRow.row), QAccessible::ListItem);
        const QAccessibleInterface *row = QAccessible::queryAccessibleInterface(shownRow.row);
        QCOMPARE(row->text(QAccessible::Description), QStringLiteral("緊急 × 重要"));
        QVERIFY(!row->state().expandable);
    }

    void everyButtonCanBeHitAndIsNamed()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(awkward(), 2)));
        enter(*shownRow.row);
        QCOMPARE(shown<PaintedButton>(*shownRow.row).size(), 4);
        QCOMPARE(faultsOfButtons(*shownRow.row), QStringList());
    }

    void anotherQuadrantLooksDifferent()
    {
        DeferredRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QList<QImage> pictures;
        PanelRow row = task();
        for (const TaskQuadrant quadrant : allQuadrants) {
            row.task.quadrant = quadrant;
            shownRow.row->setRow(row);
            const QImage picture = shownRow.row->grab().toImage();
            QVERIFY(!pictures.contains(picture));
            pictures.append(picture);
        }
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::DeferredTaskRowTest)
#include "deferred_task_row_test.moc"
