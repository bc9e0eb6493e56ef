// SPDX-License-Identifier: MIT
#include "support/painted_text.h"
#include "support/test_case.h"
#include "views/row_in_window.h"
#include "views/section_header_row.h"

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;

const QString clearHelp = QStringLiteral("完了済みのタスクをまとめて削除（元に戻せます）");

struct HeaderInWindow : RowInWindow<SectionHeaderRow>
{
    HeaderInWindow()
    {
        row = new SectionHeaderRow({[this](Kind kind) {
                                        calls.append(kind == Kind::DeferredHeader
                                                         ? QStringLiteral("toggle deferred")
                                                         : QStringLiteral("toggle completed"));
                                    },
                                    [this] { calls.append(QStringLiteral("clear")); },
                                    [this] { calls.append(QStringLiteral("board")); }},
                                   &window);
    }
};

PanelRow header(Kind kind, bool isExpanded, int count = 2)
{
    PanelRow row;
    row.kind = kind;
    row.isExpanded = isExpanded;
    row.count = count;
    return row;
}

} // namespace

class SectionHeaderRowTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theDeferredOneShowsAndHidesTheBoard()
    {
        HeaderInWindow shown;
        PanelRow row = header(Kind::DeferredHeader, true);
        QVERIFY(shown.show(row));
        QVERIFY(click(*shown.row, QStringLiteral("4象限で見る")));
        row.isBoardVisible = true;
        shown.row->setRow(row);
        QVERIFY(click(*shown.row, QStringLiteral("4象限を閉じる")));
        QCOMPARE(shown.calls, (QStringList{QStringLiteral("board"), QStringLiteral("board")}));
        QCOMPARE(buttonNamed(*shown.row, QStringLiteral("4象限を閉じる"))->help(),
                 QStringLiteral("2件を4象限で表示"));
    }

    void theTextSaysTheSectionAndItsCount_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("isExpanded");
        QTest::addColumn<QString>("text");
        QTest::newRow("open") << int(Kind::TodoHeader) << false << QStringLiteral("TODO 2");
        QTest::newRow("deferred") << int(Kind::DeferredHeader) << true << QStringLiteral("あとでやる 2");
        QTest::newRow("completed, folded")
            << int(Kind::CompletedHeader) << false << QStringLiteral("完了済みを表示 2");
        QTest::newRow("completed, shown")
            << int(Kind::CompletedHeader) << true << QStringLiteral("完了済みを閉じる 2");
    }

    void theTextSaysTheSectionAndItsCount()
    {
        QFETCH(int, kind);
        QFETCH(bool, isExpanded);
        QFETCH(QString, text);
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind(kind), isExpanded)));
        QVERIFY(labelSaying(*shownRow.row, text));
        QVERIFY(paintedText(*shownRow.row).startsWith(text));
        QCOMPARE(accessibleName(*shownRow.row), text);
    }

    void aClickTogglesTheSection()
    {
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind::DeferredHeader, true)));
        QTest::mouseClick(shownRow.row, Qt::LeftButton);
        shownRow.row->setRow(header(Kind::CompletedHeader, true));
        QTest::mouseClick(shownRow.row, Qt::LeftButton);
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')), QStringLiteral("toggle deferred,toggle completed"));
    }

    void aPressThatIsTakenElsewhereTogglesNothing()
    {
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind::DeferredHeader, true)));
        QTest::mousePress(shownRow.row, Qt::LeftButton);
        QTest::mouseRelease(shownRow.row, Qt::LeftButton, {}, QPoint(10, 80));
        QTest::mouseClick(shownRow.row, Qt::RightButton);
        QCOMPARE(shownRow.calls, QStringList());
    }

    void spaceAndReturnToggleTheSection()
    {
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind::CompletedHeader, false)));
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
            QTest::keyClick(shownRow.row, key);
        QCOMPARE(shownRow.calls.count(QStringLiteral("toggle completed")), 3);
    }

    void leftFoldsAndRightUnfolds()
    {
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind::DeferredHeader, true)));
        QTest::keyClick(shownRow.row, Qt::Key_Right);
        QCOMPARE(shownRow.calls.size(), 0);
        QTest::keyClick(shownRow.row, Qt::Key_Left);
        QCOMPARE(shownRow.calls.size(), 1);
        shownRow.row->setRow(header(Kind::DeferredHeader, false));
        QTest::keyClick(shownRow.row, Qt::Key_Left);
        QCOMPARE(shownRow.calls.size(), 1);
        QTest::keyClick(shownRow.row, Qt::Key_Right);
        QCOMPARE(shownRow.calls.size(), 2);
    }

    void theCompletedAreClearedByMouseAndByKey()
    {
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind::CompletedHeader, false)));
        QTest::keyClick(shownRow.row, Qt::Key_Delete);
        QVERIFY(click(*shownRow.row, clearHelp));
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')), QStringLiteral("clear,clear"));
        QCOMPARE(faultsOfButtons(*shownRow.row), QStringList());
    }

    void onlyTheCompletedCanBeCleared()
    {
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind::DeferredHeader, true)));
        QVERIFY(!buttonNamed(*shownRow.row, clearHelp));
        QTest::keyClick(shownRow.row, Qt::Key_Delete);
        QCOMPARE(shownRow.calls, QStringList());
    }

    void theHeaderOfTheOpenTasksDoesNothing()
    {
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind::TodoHeader, false)));
        QTest::mouseClick(shownRow.row, Qt::LeftButton);
        QVERIFY(!shownRow.row->hasFocus());
        QCOMPARE(shownRow.calls, QStringList());
    }

    void assistiveTechnologyHearsWhetherTheSectionIsFolded()
    {
        HeaderInWindow shownRow;
        QVERIFY(shownRow.show(header(Kind::DeferredHeader, true)));
        QCOMPARE(roleOf(*shownRow.row), QAccessible::ListItem);
        QVERIFY(QAccessible::queryAccessibleInterface(shownRow.row)->state().expanded);
        shownRow.row->setRow(header(Kind::CompletedHeader, false));
        QVERIFY(QAccessible::queryAccessibleInterface(shownRow.row)->state().collapsed);
        shownRow.row->setRow(header(Kind::TodoHeader, false));
        QVERIFY(!QAccessible::queryAccessibleInterface(shownRow.row)->state().expandable);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::SectionHeaderRowTest)
#include "section_header_row_test.moc"
