// SPDX-License-Identifier: MIT
#include "look/check_circle.h"
#include "look/icon_button.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"
#include "views/completed_row.h"
#include "views/row_in_window.h"

namespace wrenfold {

namespace {

const QString restoreHelp = QStringLiteral("未完了に戻す");
const QString deleteHelp = QStringLiteral("削除（元に戻せます）");

struct CompletedRowInWindow : RowInWindow<CompletedRow>
{
    CompletedRowInWindow()
    {
        const auto note = [this](const char *what) {
            return [this, what](const TaskItem &task) {
                calls.append(QLatin1String(what) + QLatin1Char(' ') + task.title);
            };
        };
        row = new CompletedRow({note("restore"), note("delete")}, &window);
    }
};

PanelRow rowOf(const QString &title)
{
    PanelRow row;
    row.kind = PanelRow::Kind::CompletedTask;
    row.task = done(madeTask(title));
    return row;
}

PanelRow task()
{
    return rowOf(QStringLiteral("a"));
}

} // namespace

class CompletedRowTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsReachedByMouse()
    {
        CompletedRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        enter(*shownRow.row);
        QVERIFY(click(*shownRow.row, restoreHelp));
        QVERIFY(click(*shownRow.row, deleteHelp));
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')), QStringLiteral("restore a,delete a"));
    }

    void everyControlIsReachedByKey()
    {
        CompletedRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Delete})
            QTest::keyClick(shownRow.row, key);
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("restore a,restore a,restore a,delete a"));
    }

    void theMenuHoldsEverythingAndDoesIt()
    {
        CompletedRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QMenu *menu = openMenu(*shownRow.row);
        QVERIFY(menu);
        QCOMPARE(menuTexts(*menu), QStringList({restoreHelp, QStringLiteral("-"), deleteHelp}));
        menu->close();
        QVERIFY(chooseFromMenu(*shownRow.row, restoreHelp));
        QVERIFY(chooseFromMenu(*shownRow.row, deleteHelp));
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')), QStringLiteral("restore a,delete a"));
    }

    void theCircleStaysCheckedUntilTheTaskIsReopened()
    {
        CompletedRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        QVERIFY(shown<CheckCircle>(*shownRow.row).value(0)->isChecked());
    }

    void theDeletionAppearsWhenNeededWithoutMovingTheTitle()
    {
        CompletedRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        TextLabel *title = labelSaying(*shownRow.row, QStringLiteral("a"));
        const QPoint place = title->pos();
        QVERIFY(!buttonNamed(*shownRow.row, deleteHelp));
        enter(*shownRow.row);
        QVERIFY(buttonNamed(*shownRow.row, deleteHelp));
        QCOMPARE(title->pos(), place);
        leave(*shownRow.row);
        QVERIFY(!buttonNamed(*shownRow.row, deleteHelp));
        shownRow.row->setFocus(Qt::TabFocusReason);
        QVERIFY(buttonNamed(*shownRow.row, deleteHelp));
        QCOMPARE(title->pos(), place);
    }

    void theTitleIsShownAndReadExactly()
    {
        CompletedRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(awkward())));
        QCOMPARE(paintedText(*shownRow.row), awkward());
        QCOMPARE(accessibleName(*shownRow.row), awkward());
        QCOMPARE(roleOf(*shownRow.row), QAccessible::ListItem);
    }

    void anElidedTitleIsReadWhole()
    {
        const QString title = QStringLiteral("請求書を送る🧾").repeated(40);
        CompletedRowInWindow shownRow;
        QVERIFY(shownRow.show(rowOf(title)));
        QCOMPARE(accessibleName(*shownRow.row), title);
        QCOMPARE(shownToolTip(*labelSaying(*shownRow.row, title)), plainToolTip(title));
    }

    void everyButtonCanBeHitAndIsNamed()
    {
        CompletedRowInWindow shownRow;
        QVERIFY(shownRow.show(task()));
        enter(*shownRow.row);
        QCOMPARE(shown<PaintedButton>(*shownRow.row).size(), 2);
        QCOMPARE(faultsOfButtons(*shownRow.row), QStringList());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::CompletedRowTest)
#include "completed_row_test.moc"
