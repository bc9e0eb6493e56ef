// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "shell/program_on_fakes.h"
#include "support/log_capture.h"
#include "support/test_case.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace wrenfold {

namespace {

const QString hideText = QStringLiteral("パネルを隠す"); ///< Of the item's row.

/// The window in sight that has this title, or null.
QWidget *windowInSight(const QString &title)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && window->windowTitle() == title)
            return window;
    }
    return nullptr;
}

} // namespace

/// The ways to the panel, and to the other windows: the status item, the menus and the hot keys.
class PanelReachTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theStatusItemsRowsReachThePanelAndTheProgram()
    {
        Program program;
        program.start();
        FakeStatusItem &item = *program.fakes.statusItem;
        QVERIFY(item.choose(hideText));
        QVERIFY(!program.panel()->isVisible());
        item.click();
        QVERIFY(program.panel()->isVisible());
        QVERIFY(item.choose(hideText));
        QVERIFY(item.choose(QStringLiteral("パネルを表示")));
        QVERIFY(program.panel()->isVisible());
        QVERIFY(item.choose(QStringLiteral("新規TODOを追加")));
        QTRY_VERIFY(program.composer()->hasFocus());
        QMetaObject::invokeMethod(
            qApp, [&item] { QVERIFY(item.choose(QStringLiteral("終了"))); }, Qt::QueuedConnection);
        QCOMPARE(QApplication::exec(), 0);
    }

    void everyWayToTheSettingsAndTheChatOpensThem()
    {
        const QString settings = QStringLiteral("Wrenfold Settings");
        const QString chat = QStringLiteral("Wrenfold AI");
        const auto isOpen = [](const QString &title) {
            QWidget *window = windowInSight(title);
            return window && window->close();
        };
        Program program;
        program.start();
        QVERIFY(program.fakes.statusItem->choose(QStringLiteral("設定...")));
        QVERIFY(isOpen(settings));
        QVERIFY(program.fakes.statusItem->choose(QStringLiteral("AIチャット")));
        QVERIFY(isOpen(chat));
        QVERIFY(click(*program.panel(), QStringLiteral("設定...")));
        QVERIFY(isOpen(settings));
        QVERIFY(click(*program.panel(), QStringLiteral("AIチャットを開く")));
        QVERIFY(isOpen(chat));
        program.panel()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(program.panel()));
        QTest::keyClick(program.panel(), Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(isOpen(settings));
        for (const auto &[entry, title] :
             {std::pair(QStringLiteral("設定..."), settings), {QStringLiteral("AIチャット"), chat}}) {
            QMenu *menu = program.openMenuOn(QStringLiteral("パネルを隠す"));
            QVERIFY(menu);
            menuEntry(*menu, entry)->trigger();
            menu->close();
            QVERIFY(isOpen(title));
        }
    }

    void theApplicationsKeysWorkInTheSettingsAndTheChat()
    {
        Program program;
        program.start();
        program.add(QStringLiteral("a"));
        QVERIFY(program.fakes.statusItem->choose(QStringLiteral("AIチャット")));
        QWidget *chat = windowInSight(QStringLiteral("Wrenfold AI"));
        QVERIFY(QTest::qWaitForWindowActive(chat));
        QTest::keyClick(chat, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(program.savedTitles(), QString());
        QTest::keyClick(chat, Qt::Key_Comma, Qt::ControlModifier);
        QWidget *settings = windowInSight(QStringLiteral("Wrenfold Settings"));
        QVERIFY(QTest::qWaitForWindowActive(settings));
        QTest::keyClick(settings, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(program.savedTitles(), QStringLiteral("a"));
    }

    void theKeyPHidesAPanelInSightAndShowsItAgainWithTheFocus()
    {
        Program program;
        program.start();
        QTRY_VERIFY(program.panel()->isInSight());
        program.fakes.globalShortcuts->press(VirtualKey::P);
        QVERIFY(program.panel()->isVisible()); // Not before the loop turns.
        QTRY_VERIFY(!program.panel()->isVisible());
        program.fakes.globalShortcuts->press(VirtualKey::P);
        QTRY_VERIFY(program.panel()->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(program.panel()));
    }

    void theKeyHHidesThePanel()
    {
        Program program;
        program.start();
        program.fakes.globalShortcuts->press(VirtualKey::H);
        QTRY_VERIFY(!program.panel()->isVisible());
        program.fakes.globalShortcuts->press(VirtualKey::H);
        QCoreApplication::processEvents();
        QVERIFY(!program.panel()->isVisible());
    }

    void theKeyTShowsThePanelAndTheFieldEvenWhenItIsInSight()
    {
        Program program;
        program.start();
        QVERIFY(QTest::qWaitForWindowActive(program.panel()));
        QVERIFY(!program.composer()->hasFocus());
        program.fakes.globalShortcuts->press(VirtualKey::T);
        QTRY_VERIFY(program.composer()->hasFocus());
        program.panel()->close();
        program.fakes.globalShortcuts->press(VirtualKey::T);
        QTRY_VERIFY(program.panel()->isVisible());
        QCOMPARE(program.panel()->focusWidget(), program.composer());
    }

    void theKeyTLogsOnceThatThePanelIsShown()
    {
        Program program;
        program.start();
        DebugLog::setVerbosePreference([] { return true; });
        const auto quiet = qScopeGuard([] { DebugLog::setVerbosePreference({}); });
        const LogCapture log;
        program.fakes.globalShortcuts->press(VirtualKey::T);
        QTRY_VERIFY(program.composer()->hasFocus());
        QCOMPARE(log.take().filter(QStringLiteral("panel shown")),
                 QStringList{QStringLiteral("debug ui: panel shown hardPin=true")});
    }

    void theKeysAreControlAltAndSuperWithPHAndT()
    {
        Program program;
        program.start();
        QList<uint32_t> keys;
        for (const GlobalShortcut &shortcut : program.fakes.globalShortcuts->registered()) {
            keys.append(shortcut.keyCode);
            QCOMPARE(shortcut.modifiers, 6400U);
            QVERIFY(!shortcut.description.isEmpty());
        }
        QCOMPARE(keys, (QList<uint32_t>{35, 4, 17}));
    }

    void aKeyThatIsRefusedLeavesTheOthers()
    {
        Program program;
        program.fakes.globalShortcuts->hold(VirtualKey::H);
        program.start();
        const QList<GlobalShortcut> &offered = program.fakes.globalShortcuts->offered();
        QCOMPARE(offered.size(), 3);
        QCOMPARE(offered.at(2).id, offered.at(0).id + 2); // Its number is used up all the same.
        program.fakes.globalShortcuts->press(VirtualKey::T);
        QTRY_VERIFY(program.composer()->hasFocus());
    }

    void aDocumentThatTellsOfGhostModeStartsOutOfIt()
    {
        Program program;
        QJsonObject document =
            QJsonDocument::fromJson(program.fakes.preferences->read(FocusStore::storageKey()).bytes).object();
        document.insert(QStringLiteral("isGhostMode"), true);
        program.fakes.preferences->setValue(FocusStore::storageKey(), QJsonDocument(document).toJson());
        program.start();
        QVERIFY(program.panel()->isVisible());
        QCOMPARE(program.fakes.statusItem->content().label, QString()); // No ghost.
    }

    void ghostModeHidesThePanelAndAClickOnTheItemBringsItBack()
    {
        Program program;
        program.start();
        QVERIFY(program.fakes.statusItem->choose(QStringLiteral("ゴーストモード")));
        QVERIFY(!program.panel()->isVisible());
        program.fakes.statusItem->click();
        QVERIFY(program.panel()->isVisible());
        QVERIFY(!program.panel()->windowHandle()->flags().testFlag(Qt::WindowTransparentForInput));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::PanelReachTest)
#include "panel_reach_test.moc"
