// SPDX-License-Identifier: MIT
#include "look/overlay_scroll_bar.h"
#include "look/theme.h"
#include "support/test_case.h"
#include "views/panel_row_widget.h"
#include "views/row_list_view.h"
#include "views/view_probes.h"

#include <QLineEdit>
#include <QScrollBar>

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;

/// A row that does nothing but hold a field, in which something may be half typed.
class PlainRow : public PanelRowWidget
{
    Q_OBJECT

public:
    explicit PlainRow(QWidget *parent)
        : PanelRowWidget(parent)
        , field(new QLineEdit(this))
    {
    }

    QLineEdit *field;

protected:
    void rowChanged(const PanelRow &) override {}
    bool actOnKey(int) override { return false; }
};

struct ListInWindow
{
    QWidget window;
    int made = 0;
    RowListView *list;

    explicit ListInWindow(const QList<PanelRow> &rows)
    {
        list = new RowListView(
            [this](Kind, QWidget *parent) {
                ++made;
                return new PlainRow(parent);
            },
            &window);
        window.setFocusPolicy(Qt::StrongFocus);
        window.resize(332, 320);
        list->setGeometry(0, 0, 332, 320);
        list->setRows(rows);
        window.show();
        window.setFocus();
    }

    [[nodiscard]] bool activate() { return QTest::qWaitForWindowActive(&window); }

    /// The widget of a row in sight, or kept out of sight; null when there is none.
    [[nodiscard]] PanelRowWidget *widgetOf(const PanelRow &row) const
    {
        for (PanelRowWidget *widget : shown<PanelRowWidget>(window)) {
            if (widget->row().identity() == row.identity())
                return widget;
        }
        return nullptr;
    }

    /// The title of the row that has the focus, itself or inside it; a dash when none has.
    [[nodiscard]] QString focused() const
    {
        for (QWidget *widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
            if (const auto *row = dynamic_cast<PanelRowWidget *>(widget))
                return row->row().task.title;
        }
        return QStringLiteral("-");
    }

    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    [[nodiscard]] int scroll() const { return list->verticalScrollBar()->value(); }
};

PanelRow header(Kind kind = Kind::TodoHeader)
{
    PanelRow row;
    row.kind = kind;
    return row;
}

PanelRow task(int number)
{
    PanelRow row;
    row.task = madeTask(QString::number(number));
    return row;
}

/// The header, which takes no focus, and so many tasks called 1, 2, 3 and so on.
QList<PanelRow> rowsOf(int count)
{
    QList<PanelRow> rows = {header()};
    for (int i = 1; i <= count; ++i)
        rows.append(task(i));
    return rows;
}

} // namespace

class RowListViewTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void tenThousandRowsMakeOnlyTheWidgetsInSight()
    {
        ListInWindow shownList(rowsOf(10000));
        const int inSight = 320 / Metrics::rowHeight + 2;
        QVERIFY(shownList.made <= inSight);
        QVERIFY(shownList.made >= 9);
        for (int value = 0; value <= shownList.list->verticalScrollBar()->maximum(); value += 997)
            shownList.list->verticalScrollBar()->setValue(value);
        QVERIFY(shownList.made <= inSight + 1); // One more for a part of a row at either end.
        QCOMPARE(shown<PanelRowWidget>(shownList.window).size(),
                 shown<PlainRow>(*shownList.list->viewport()).size());
    }

    void everyRowInSightStandsInItsPlace()
    {
        const QList<PanelRow> rows = rowsOf(100);
        ListInWindow shownList(rows);
        shownList.list->verticalScrollBar()->setValue(1000);
        int covered = 0;
        for (PanelRowWidget *widget : shown<PanelRowWidget>(shownList.window)) {
            const int top =
                Metrics::sectionHeaderHeight + (widget->row().task.title.toInt() - 1) * Metrics::rowHeight;
            QCOMPARE(widget->y(), top - 1000);
            QCOMPARE(widget->height(), Metrics::rowHeight);
            QCOMPARE(widget->width(), shownList.list->viewport()->width());
            covered += widget->geometry().intersected(shownList.list->viewport()->rect()).height();
        }
        QCOMPARE(covered, shownList.list->viewport()->height());
    }

    void theScrollRangeEndsWithTheLastRow()
    {
        ListInWindow shownList(rowsOf(100));
        const QScrollBar *bar = shownList.list->verticalScrollBar();
        QCOMPARE(bar->maximum(), Metrics::sectionHeaderHeight + 100 * Metrics::rowHeight - 320);
        QCOMPARE(bar->pageStep(), 320);
        shownList.list->resize(332, 200);
        QCOMPARE(bar->maximum(), Metrics::sectionHeaderHeight + 100 * Metrics::rowHeight - 200);
        shownList.list->setRows(rowsOf(3));
        QCOMPARE(bar->maximum(), 0);
        QVERIFY(shown<OverlayScrollBar>(shownList.window).isEmpty());
    }

    void aListThatShrinksWhileScrolledDownShowsItsEnd()
    {
        ListInWindow shownList(rowsOf(100));
        shownList.list->verticalScrollBar()->setValue(shownList.list->verticalScrollBar()->maximum());
        const QList<PanelRow> rows = rowsOf(20);
        shownList.list->setRows(rows);
        QCOMPARE(shownList.widgetOf(rows.last())->geometry().bottom(), 319);
    }

    void aRowThatStaysInSightKeepsItsWidget()
    {
        QList<PanelRow> rows = rowsOf(6);
        ListInWindow shownList(rows);
        PanelRowWidget *third = shownList.widgetOf(rows.at(3));
        QVERIFY(third);
        third->findChild<QLineEdit *>()->setText(QStringLiteral("half typed"));

        rows[3].task.title = QStringLiteral("renamed");
        rows.move(3, 1);
        rows.removeAt(5);
        rows.append(task(7));
        const int madeBefore = shownList.made;
        shownList.list->setRows(rows);
        QCOMPARE(shownList.widgetOf(rows.at(1)), third);
        QCOMPARE(third->y(), Metrics::sectionHeaderHeight);
        QCOMPARE(third->row().task.title, QStringLiteral("renamed"));
        QCOMPARE(third->findChild<QLineEdit *>()->text(), QStringLiteral("half typed"));
        QVERIFY(shownList.made <= madeBefore + 1);
    }

    void aFocusedRowKeepsItsWidgetWhileScrolledAway()
    {
        const QList<PanelRow> rows = rowsOf(1000);
        ListInWindow shownList(rows);
        QVERIFY(shownList.activate());
        PanelRowWidget *widget = shownList.widgetOf(rows.at(2));
        auto *field = widget->findChild<QLineEdit *>();
        field->setFocus();
        shownList.list->verticalScrollBar()->setValue(20000);
        QVERIFY(field->hasFocus());
        QCOMPARE(shownList.widgetOf(rows.at(2)), widget);
        QVERIFY(widget->geometry().bottom() < 0);
        shownList.list->verticalScrollBar()->setValue(0);
        QCOMPARE(shownList.widgetOf(rows.at(2)), widget);
    }

    void itKeepsItsWidgetWhileAnotherWindowIsInFront()
    {
        const QList<PanelRow> rows = rowsOf(1000);
        ListInWindow shownList(rows);
        QVERIFY(shownList.activate());
        PanelRowWidget *widget = shownList.widgetOf(rows.at(2));
        widget->findChild<QLineEdit *>()->setFocus();
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        shownList.list->verticalScrollBar()->setValue(20000);
        QCOMPARE(shownList.widgetOf(rows.at(2)), widget);
        QCOMPARE(widget->row(), rows.at(2));
    }

    void theRowThatTookARemovedRowsPlaceHasTheFocus()
    {
        QList<PanelRow> rows = rowsOf(5);
        ListInWindow shownList(rows);
        QVERIFY(shownList.activate());
        shownList.list->focusRow(rows.at(3).identity(), Qt::TabFocusReason);
        rows.removeAt(3);
        shownList.list->setRows(rows);
        QCOMPARE(shownList.focused(), QStringLiteral("4"));
        rows.removeAt(3);
        shownList.list->setRows(rows);
        QCOMPARE(shownList.focused(), QStringLiteral("5"));
        rows.removeAt(3);
        shownList.list->setRows(rows);
        QCOMPARE(shownList.focused(), QStringLiteral("2"));
        shownList.list->setRows({header()});
        QCOMPARE(shownList.focused(), QStringLiteral("-"));
    }

    void aRemovedRowThatWasScrolledAwayHandsTheFocusOnToo()
    {
        QList<PanelRow> rows = rowsOf(1000);
        ListInWindow shownList(rows);
        QVERIFY(shownList.activate());
        shownList.list->focusRow(rows.at(2).identity(), Qt::TabFocusReason);
        shownList.list->verticalScrollBar()->setValue(20000);
        rows.removeAt(2);
        shownList.list->setRows(rows);
        QCOMPARE(shownList.focused(), QStringLiteral("3"));
    }

    void aListWithoutTheFocusDoesNotTakeIt()
    {
        QList<PanelRow> rows = rowsOf(5);
        ListInWindow shownList(rows);
        QVERIFY(shownList.activate());
        rows.removeAt(2);
        shownList.list->setRows(rows);
        QVERIFY(shownList.window.hasFocus());
    }

    void theArrowKeysGoFromRowToRow()
    {
        ListInWindow shownList(rowsOf(3));
        QVERIFY(shownList.activate());
        shownList.list->setFocus(Qt::TabFocusReason);
        QCOMPARE(shownList.focused(), QStringLiteral("1"));
        shownList.press(Qt::Key_Down);
        QCOMPARE(shownList.focused(), QStringLiteral("2"));
        shownList.press(Qt::Key_Down);
        shownList.press(Qt::Key_Down);
        QCOMPARE(shownList.focused(), QStringLiteral("3"));
        shownList.press(Qt::Key_Up);
        QCOMPARE(shownList.focused(), QStringLiteral("2"));
        shownList.press(Qt::Key_Up);
        shownList.press(Qt::Key_Up);
        QCOMPARE(shownList.focused(), QStringLiteral("1"));
    }

    void theArrowKeysPassOverRowsThatTakeNoFocus()
    {
        QList<PanelRow> rows = rowsOf(1);
        rows.append(header(Kind::EmptyState));
        rows.append(task(2));
        ListInWindow shownList(rows);
        QVERIFY(shownList.activate());
        shownList.list->setFocus();
        shownList.press(Qt::Key_Down);
        QCOMPARE(shownList.focused(), QStringLiteral("2"));
        shownList.press(Qt::Key_Up);
        QCOMPARE(shownList.focused(), QStringLiteral("1"));
    }

    void homeAndEndGoToTheEndsAndShowThem()
    {
        ListInWindow shownList(rowsOf(1000));
        QVERIFY(shownList.activate());
        shownList.list->setFocus();
        shownList.press(Qt::Key_End);
        QCOMPARE(shownList.focused(), QStringLiteral("1000"));
        QCOMPARE(shownList.scroll(), shownList.list->verticalScrollBar()->maximum());
        shownList.press(Qt::Key_Home);
        QCOMPARE(shownList.focused(), QStringLiteral("1"));
        shownList.press(Qt::Key_Up);
        QCOMPARE(shownList.scroll(), 0);
    }

    void pageKeysGoByWhatIsInSight()
    {
        ListInWindow shownList(rowsOf(1000));
        QVERIFY(shownList.activate());
        shownList.list->setFocus();
        shownList.press(Qt::Key_PageDown);
        QCOMPARE(shownList.focused(), QStringLiteral("11"));
        shownList.press(Qt::Key_PageDown);
        QCOMPARE(shownList.focused(), QStringLiteral("21"));
        shownList.press(Qt::Key_PageUp);
        QCOMPARE(shownList.focused(), QStringLiteral("11"));
        shownList.press(Qt::Key_PageUp);
        shownList.press(Qt::Key_PageUp);
        QCOMPARE(shownList.focused(), QStringLiteral("1"));
        shownList.press(Qt::Key_End);
        shownList.press(Qt::Key_PageDown);
        QCOMPARE(shownList.focused(), QStringLiteral("1000"));
    }

    void theFocusedRowIsScrolledIntoSight()
    {
        ListInWindow shownList(rowsOf(1000));
        QVERIFY(shownList.activate());
        shownList.list->setFocus();
        for (int i = 0; i < 40; ++i) {
            shownList.press(Qt::Key_Down);
            QVERIFY(shownList.list->viewport()->rect().contains(QApplication::focusWidget()->geometry()));
        }
        QCOMPARE(shownList.focused(), QStringLiteral("41"));
    }

    void comingBackTheFocusIsWhereItWas()
    {
        ListInWindow shownList(rowsOf(1000));
        QVERIFY(shownList.activate());
        shownList.list->setFocus();
        shownList.press(Qt::Key_PageDown);
        shownList.window.setFocus();
        shownList.list->setFocus(Qt::TabFocusReason);
        QCOMPARE(shownList.focused(), QStringLiteral("11"));
    }

    void theListIsOneStopOfTheTabKey()
    {
        ListInWindow shownList(rowsOf(3));
        QWidget before(&shownList.window);
        QWidget after(&shownList.window);
        before.setFocusPolicy(Qt::TabFocus);
        after.setFocusPolicy(Qt::TabFocus);
        before.show();
        after.show();
        shownList.window.setFocusPolicy(Qt::NoFocus);
        QWidget::setTabOrder(&before, shownList.list);
        QWidget::setTabOrder(shownList.list, &after);
        // Their fields are for the tests of half-typed texts.
        for (QLineEdit *field : shown<QLineEdit>(shownList.window))
            field->setFocusPolicy(Qt::ClickFocus);
        QVERIFY(shownList.activate());

        before.setFocus();
        shownList.press(Qt::Key_Tab);
        QCOMPARE(shownList.focused(), QStringLiteral("1"));
        shownList.press(Qt::Key_Down);
        shownList.press(Qt::Key_Tab);
        QVERIFY(after.hasFocus());
        shownList.press(Qt::Key_Backtab);
        QCOMPARE(shownList.focused(), QStringLiteral("2"));
        shownList.press(Qt::Key_Backtab);
        QVERIFY(before.hasFocus());
    }

    void aRowThatIsNotThereGetsNoFocus()
    {
        const QList<PanelRow> rows = rowsOf(3);
        ListInWindow shownList(rows);
        QVERIFY(shownList.activate());
        QVERIFY(shownList.list->contains(rows.at(3).identity()));
        QVERIFY(!shownList.list->contains(task(3).identity()));
        shownList.list->focusRow(task(3).identity(), Qt::TabFocusReason);
        QVERIFY(shownList.window.hasFocus());
    }

    void theListIsAListToAssistiveTechnology()
    {
        ListInWindow shownList(rowsOf(3));
        QCOMPARE(roleOf(*shownList.list), QAccessible::List);
        QCOMPARE(roleOf(*shown<PanelRowWidget>(shownList.window).value(0)), QAccessible::ListItem);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::RowListViewTest)
#include "row_list_view_test.moc"
