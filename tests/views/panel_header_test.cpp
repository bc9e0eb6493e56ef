// SPDX-License-Identifier: MIT
#include "look/count_badge.h"
#include "look/icon_button.h"
#include "support/test_case.h"
#include "support/tool_tip.h"
#include "views/panel_header.h"
#include "views/view_probes.h"

namespace wrenfold {

namespace {

const QString undoHelp = QStringLiteral("元に戻す（⌘Z）");
const QString redoHelp = QStringLiteral("やり直す（⌘Y）");
const QString hideHelp = QStringLiteral("パネルを隠す");

struct HeaderInWindow
{
    QWidget window;
    QStringList calls;
    PanelHeader *header = new PanelHeader({{[this] { calls.append(QStringLiteral("toggle")); },
                                            [this] { calls.append(QStringLiteral("reset")); },
                                            [this] { calls.append(QStringLiteral("skip")); }},
                                           [this] { calls.append(QStringLiteral("board")); },
                                           [this] { calls.append(QStringLiteral("list")); },
                                           [this] { calls.append(QStringLiteral("pin")); },
                                           [this] { calls.append(QStringLiteral("undo")); },
                                           [this] { calls.append(QStringLiteral("redo")); },
                                           [this] { calls.append(QStringLiteral("sort")); },
                                           [this] { calls.append(QStringLiteral("chat")); },
                                           [this] { calls.append(QStringLiteral("settings")); },
                                           [this] { calls.append(QStringLiteral("hide")); }},
                                          &window);

    HeaderInWindow()
    {
        header->resize(320, header->height());
        window.resize(320, 100);
        window.show();
    }
};

} // namespace

class PanelHeaderTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsReachedByMouseAndByKey()
    {
        HeaderInWindow shownHeader;
        for (const QString &help : {undoHelp, redoHelp, hideHelp}) {
            QVERIFY(click(*shownHeader.header, help));
            QTest::keyClick(buttonNamed(*shownHeader.header, help), Qt::Key_Space);
        }
        QCOMPARE(shownHeader.calls.join(QLatin1Char(',')), QStringLiteral("undo,undo,redo,redo,hide,hide"));
    }

    void everyIconOfTheStripDoesItsOperation()
    {
        HeaderInWindow shownHeader;
        for (const QString &help : {QStringLiteral("あとでやるの4象限を表示（0）"),
                                    QStringLiteral("NOWだけ表示"), QStringLiteral("最前面固定: オフ"),
                                    QStringLiteral("AIチャットを開く"), QStringLiteral("設定...")})
            QVERIFY2(click(*shownHeader.header, help), qPrintable(help));
        QCOMPARE(shownHeader.calls.join(QLatin1Char(',')), QStringLiteral("board,list,pin,chat,settings"));
    }

    void theHelpTextsSayWhatIsOn()
    {
        HeaderInWindow shownHeader;
        PanelHeader &header = *shownHeader.header;
        header.setBoard(false, 4);
        QVERIFY(buttonNamed(header, QStringLiteral("あとでやるの4象限を表示（4）")));
        header.setBoard(true, 4);
        auto *board =
            qobject_cast<IconButton *>(buttonNamed(header, QStringLiteral("あとでやるの4象限を閉じる")));
        QVERIFY(board && board->isOn());
        header.setListHidden(true);
        QVERIFY(buttonNamed(header, QStringLiteral("TODOリストを表示")));
        header.setHardPinned(true);
        auto *pin = qobject_cast<IconButton *>(buttonNamed(header, QStringLiteral("最前面固定: オン")));
        QVERIFY(pin && pin->isOn());
        QCOMPARE(pin->symbol(), QStringLiteral("square.3.stack.3d.top.fill"));
        header.setHardPinned(false);
        QCOMPARE(pin->symbol(), QStringLiteral("square.3.stack.3d"));
    }

    void sortingIsDisabledWhileItRuns()
    {
        HeaderInWindow shownHeader;
        const QString sortHelp = QStringLiteral("AIで優先順に並べ替え（GOALが基準）");
        QVERIFY(click(*shownHeader.header, sortHelp));
        shownHeader.header->setCanSort(false);
        QVERIFY(click(*shownHeader.header, sortHelp));
        QCOMPARE(shownHeader.calls, QStringList(QStringLiteral("sort")));
        QCOMPARE(shownToolTip(*buttonNamed(*shownHeader.header, sortHelp)), plainToolTip(sortHelp));
    }

    void theSymbolsAreTheirOwn()
    {
        HeaderInWindow shownHeader;
        const auto symbolOf = [&shownHeader](const QString &help) {
            return qobject_cast<IconButton *>(buttonNamed(*shownHeader.header, help))->symbol();
        };
        QCOMPARE(symbolOf(undoHelp), QStringLiteral("arrow.uturn.backward"));
        QCOMPARE(symbolOf(redoHelp), QStringLiteral("arrow.uturn.forward"));
    }

    void helpTextsAreToolTips()
    {
        HeaderInWindow shownHeader;
        for (const QString &help : {undoHelp, redoHelp, hideHelp})
            QCOMPARE(shownToolTip(*buttonNamed(*shownHeader.header, help)), plainToolTip(help));
    }

    void undoAndRedoAreDisabledWhereThereIsNothing()
    {
        HeaderInWindow shownHeader;
        shownHeader.header->setCanUndo(false);
        shownHeader.header->setCanRedo(false);
        QVERIFY(click(*shownHeader.header, undoHelp));
        QVERIFY(click(*shownHeader.header, redoHelp));
        QCOMPARE(shownHeader.calls, QStringList());
        shownHeader.header->setCanUndo(true);
        QVERIFY(click(*shownHeader.header, undoHelp));
        shownHeader.header->setCanRedo(true);
        QVERIFY(click(*shownHeader.header, redoHelp));
        QCOMPARE(shownHeader.calls.join(QLatin1Char(',')), QStringLiteral("undo,redo"));
    }

    void theBadgeShowsTheDaysCount()
    {
        HeaderInWindow shownHeader;
        auto *badge = shownHeader.header->findChild<CountBadge *>();
        shownHeader.header->setCompletedTodayCount(12);
        QCOMPARE(badge->count(), 12);
        QCOMPARE(accessibleName(*badge), QStringLiteral("今日完了したタスク数 12"));
        QCOMPARE(shownToolTip(*badge), plainToolTip(QStringLiteral("今日完了したタスク数")));
    }

    void aGrowingCountPushesNothingOntoSomethingElse()
    {
        HeaderInWindow shownHeader;
        for (const int count : {0, 9, 10, 100, 12345}) {
            shownHeader.header->setCompletedTodayCount(count);
            auto *badge = shownHeader.header->findChild<CountBadge *>();
            QCOMPARE(badge->width(), badge->sizeHint().width());
            QVERIFY(badge->geometry().right() < buttonNamed(*shownHeader.header, undoHelp)->x());
            QVERIFY(buttonNamed(*shownHeader.header, redoHelp)->geometry().right() <
                    buttonNamed(*shownHeader.header, hideHelp)->x());
            QCOMPARE(faultsOfButtons(*shownHeader.header), QStringList());
        }
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::PanelHeaderTest)
#include "panel_header_test.moc"
