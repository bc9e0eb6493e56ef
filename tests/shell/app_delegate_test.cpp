// SPDX-License-Identifier: MIT
#include "look/text_field.h"
#include "model/saved_state.h"
#include "shell/app_delegate.h"
#include "shell/focus_panel.h"
#include "support/fake_platform.h"
#include "support/log_capture.h"
#include "support/test_case.h"
#include "views/menu_probes.h"
#include "views/panel_row_widget.h"
#include "views/todo_composer.h"
#include "views/view_probes.h"

#include <QRegularExpression>
#include <QScreen>
#include <QWindow>

namespace wrenfold {

namespace {

const QString hideText = QStringLiteral("Wren Fold を隠す"); ///< Of the menu's entry.
const QString hideButton = QStringLiteral("パネルを隠す");

/// A program on fakes. The panel is found as the desktop finds it, among the windows.
struct Program
{
    OffscreenSilence silence;
    FakePlatform fakes;
    std::unique_ptr<AppDelegate> delegate;

    Program() { fakes.preferences->setValue(FocusStore::storageKey(), StoreOnFakes::documentWith({})); }

    void start()
    {
        delegate = std::make_unique<AppDelegate>(fakes.platform);
        delegate->applicationDidFinishLaunching();
    }

    [[nodiscard]] static FocusPanel *panel()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (auto *panel = qobject_cast<FocusPanel *>(window))
                return panel;
        }
        return nullptr;
    }
    [[nodiscard]] static TextField *composer()
    {
        return panel()->findChild<TodoComposer *>()->findChild<TextField *>();
    }
    /// The menu that a press of the right button opens where the header's button stands.
    [[nodiscard]] static QMenu *openMenuOn(const QString &button)
    {
        const PaintedButton *place = buttonNamed(*panel(), button);
        QTest::mouseClick(panel()->windowHandle(), Qt::RightButton, {},
                          place->mapTo(panel(), place->rect().center()));
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }
    static void add(const QString &title)
    {
        type(composer(), title);
        QTest::keyClick(composer(), Qt::Key_Return);
    }

    [[nodiscard]] QString savedTitles() const
    {
        const QByteArray document = fakes.preferences->read(FocusStore::storageKey()).bytes;
        return words(decodeSavedState(document).value_or(SavedState()).tasks);
    }
};

} // namespace

class AppDelegateTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aRenameThatIsOpenAtTheEndIsKept()
    {
        Program program;
        program.start();
        QVERIFY(QTest::qWaitForWindowActive(Program::panel()));
        Program::add(QStringLiteral("a"));
        QCoreApplication::processEvents();
        PanelRowWidget *row = nullptr;
        for (PanelRowWidget *candidate : shown<PanelRowWidget>(*Program::panel())) {
            if (candidate->row().kind == PanelRow::Kind::Task)
                row = candidate;
        }
        QVERIFY(row);
        row->setFocus(Qt::TabFocusReason);
        QTest::keyClick(row, Qt::Key_F2);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("renamed"));
        program.delegate.reset();
        QCOMPARE(program.savedTitles(), QStringLiteral("renamed"));
    }

    void theStartShowsThePanel()
    {
        Program program;
        program.start();
        QVERIFY(program.panel()->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(program.panel()));
        QVERIFY(!program.composer()->hasFocus());
        QCOMPARE(program.fakes.panelWindow->takePinned().first(),
                 (FakePanelWindow::Pinned{program.panel()->windowHandle(), PanelLevel::AboveFullScreen}));
    }

    void thePanelIsPaintedAnewWhenTheDesktopsAppearanceChanges()
    {
        Program program;
        program.start();
        QVERIFY(QTest::qWaitForWindowExposed(program.panel()));
        // What is on the screen, a little inside the left edge.
        const auto background = [&] {
            return program.panel()
                ->screen()
                ->grabWindow(program.panel()->winId())
                .toImage()
                .pixelColor(Metrics::panelPadding / 2, program.panel()->height() / 2);
        };
        QTRY_COMPARE(background(), Theme::light().background);
        program.fakes.desktopAppearance->set({true, false, false});
        QTRY_COMPARE(background(), Theme::dark().background);
        program.fakes.desktopAppearance->set({true, true, false});
        QTRY_COMPARE(background(), Theme::darkHighContrast().background);
        QCOMPARE(Durations::motion(), std::chrono::milliseconds(160));
        program.fakes.desktopAppearance->set({{}, false, true});
        QTRY_COMPARE(background(), Theme::light().background);
        QCOMPARE(Durations::motion(), std::chrono::milliseconds(0));
        program.fakes.desktopAppearance->set({});
    }

    void whileControlIsHeldTheRowsShowTheirHandles()
    {
        Program program;
        program.start();
        program.add(QStringLiteral("一"));
        const QString help = QStringLiteral("TODOをドラッグして並べ替え、またはあとでやるへ分類");
        QVERIFY(!buttonNamed(*program.panel(), help));
        program.fakes.modifierKeys->setControl(true);
        QTRY_VERIFY(buttonNamed(*program.panel(), help));
        program.fakes.modifierKeys->setControl(false);
        QTRY_VERIFY(!buttonNamed(*program.panel(), help));
    }

    void theStartAsksForPermissionToNotifyOnce()
    {
        Program program;
        program.delegate = std::make_unique<AppDelegate>(program.fakes.platform);
        QCOMPARE(program.fakes.notificationCenter->openQuestions(), 0);
        program.delegate->applicationDidFinishLaunching();
        QCOMPARE(program.fakes.notificationCenter->openQuestions(), 1);
        LogCapture log;
        program.fakes.notificationCenter->answerQuestions(true);
        QCOMPARE(log.take(), QStringList{QStringLiteral("info app: notification permission granted=true")});
    }

    void aNotificationOfTheTimerAsksForNothingMore()
    {
        Program program;
        program.start();
        program.fakes.notificationCenter->answerQuestions(true);
        QTest::mouseClick(buttonNamed(*program.panel(), QStringLiteral("ポモドーロを開始（25分）")),
                          Qt::LeftButton);
        program.fakes.clock->advance(std::chrono::seconds(1501));
        QCOMPARE(program.fakes.notificationCenter->listed().size(), 3);
        QCOMPARE(program.fakes.notificationCenter->openQuestions(), 0);
        QCOMPARE(program.fakes.sounds->take(), (QList<Sound>{Sound::Tink, Sound::Tink, Sound::Glass}));
    }

    void aClickOnANotificationShowsThePanel()
    {
        Program program;
        program.start();
        QTest::mouseClick(buttonNamed(*program.panel(), hideButton), Qt::LeftButton);
        QVERIFY(!program.panel()->isVisible());
        program.fakes.notificationCenter->click();
        QVERIFY(program.panel()->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(program.panel()));
    }

    void nothingIsShownBeforeTheApplicationIsReady()
    {
        Program program;
        program.delegate = std::make_unique<AppDelegate>(program.fakes.platform);
        QVERIFY(!program.panel());
        QVERIFY(!program.fakes.statusItem->isShown());
        QVERIFY(!program.fakes.singleInstance->startAgain());
    }

    void theStartSaysInTheLogHowFarItIs()
    {
        Program program;
        TaskItem now = madeTask(QStringLiteral("now"));
        TaskItem subtask = madeSubtask(QStringLiteral("subtask"), now);
        TaskItem today = done(madeTask(QStringLiteral("today")));
        today.completedAt = Timestamp::fromDateTime(program.fakes.clock->now());
        const TaskList tasks{now, subtask, today, deferred(madeTask(QStringLiteral("later")))};
        program.fakes.preferences->setValue(FocusStore::storageKey(), StoreOnFakes::documentWith(tasks));
        LogCapture log;
        program.start();
        QCOMPARE(log.take().filter(QRegularExpression(QStringLiteral("^info (app|ui): "))),
                 (QStringList{QStringLiteral("info app: launch accessory mode verbose=false"),
                              QStringLiteral("info ui: status bar ready"),
                              QStringLiteral("info app: ready open=1 todayDone=1")}));
    }

    void theStatusItemsRowsReachThePanelAndTheProgram()
    {
        Program program;
        program.start();
        FakeStatusItem &item = *program.fakes.statusItem;
        QVERIFY(item.choose(hideButton));
        QVERIFY(!program.panel()->isVisible());
        item.click();
        QVERIFY(program.panel()->isVisible());
        QVERIFY(item.choose(QStringLiteral("パネルを隠す")));
        QVERIFY(item.choose(QStringLiteral("パネルを表示")));
        QVERIFY(program.panel()->isVisible());
        QVERIFY(item.choose(QStringLiteral("新規TODOを追加")));
        QTRY_VERIFY(program.composer()->hasFocus());
        QMetaObject::invokeMethod(
            qApp, [&item] { QVERIFY(item.choose(QStringLiteral("終了"))); }, Qt::QueuedConnection);
        QCOMPARE(QApplication::exec(), 0);
    }

    void rowsOfWindowsThatAreNotThereAreDisabled()
    {
        Program program;
        program.start();
        const QList<StatusMenuRow> rows = program.fakes.statusItem->openMenu();
        for (const StatusMenuRow &row : rows) {
            if (row.title == QStringLiteral("設定...") || row.title == QStringLiteral("AIチャット"))
                QVERIFY(!row.isEnabled);
        }
        QVERIFY(!program.fakes.statusItem->choose(QStringLiteral("設定...")));
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

    void aSecondStartShowsThePanelAgain()
    {
        Program program;
        program.start();
        program.panel()->close();
        QVERIFY(!program.panel()->isVisible());
        QVERIFY(program.fakes.singleInstance->startAgain());
        QVERIFY(program.panel()->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(program.panel()));
    }

    void aFirstStartHasTheTwoSampleTasksWithTheFirstAsNow()
    {
        const OffscreenSilence silence;
        FakePlatform fakes;
        AppDelegate delegate(fakes.platform);
        delegate.applicationDidFinishLaunching();
        const QList<PanelRowWidget *> rows = shown<PanelRowWidget>(*Program::panel());
        QCOMPARE(rows.size(), 3);
        QVERIFY(rows.at(1)->row().isActive);
        QVERIFY(!rows.at(2)->row().isActive);
    }

    void whatIsTypedIsSavedAndThereAfterANewStart()
    {
        Program program;
        program.start();
        program.add(QStringLiteral("買い物🛒"));
        QCOMPARE(program.savedTitles(), QStringLiteral("買い物🛒"));
        program.delegate.reset();
        QVERIFY(!program.panel());
        program.start();
        QVERIFY(labelSaying(*program.panel(), QStringLiteral("買い物🛒")));
    }

    void theKeysForUndoAndRedoActOnTheList()
    {
        Program program;
        program.start();
        QVERIFY(QTest::qWaitForWindowActive(program.panel()));
        program.composer()->setFocus();
        program.add(QStringLiteral("a"));
        program.add(QStringLiteral("b"));
        QTest::keyClick(program.composer(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(program.savedTitles(), QStringLiteral("a"));
        QTest::keyClick(program.composer(), Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(program.savedTitles(), QStringLiteral("a b"));
    }

    void theMenuOpensFromTheHeader_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("on a button") << hideButton;
        QTest::newRow("on a button that is disabled") << QStringLiteral("元に戻す（⌘Z）");
    }

    void theMenuOpensFromTheHeader()
    {
        QFETCH(QString, button);
        Program program;
        program.start();
        QMenu *menu = program.openMenuOn(button);
        QVERIFY(menu);
        menuEntry(*menu, hideText)->trigger();
        menu->close();
        QVERIFY(!program.panel()->isVisible());
    }

    void theMenusQuitEndsTheProgram()
    {
        Program program;
        program.start();
        QMenu *menu = program.openMenuOn(hideButton);
        QVERIFY(menu);
        QMetaObject::invokeMethod(
            menu,
            [menu] {
                menuEntry(*menu, QStringLiteral("Wren Fold を終了"))->trigger();
                menu->close();
            },
            Qt::QueuedConnection);
        QCOMPARE(QApplication::exec(), 0);
    }

    void whatTheDiskRefusedIsTriedAgainAtTheEnd()
    {
        Program program;
        program.start();
        program.fakes.preferences->failNextWrites(1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(".*")));
        program.add(QStringLiteral("a"));
        QCOMPARE(program.savedTitles(), QString());
        program.delegate.reset();
        QCOMPARE(program.savedTitles(), QStringLiteral("a"));
    }

    void whereEverythingIsSavedTheEndWritesNothing()
    {
        Program program;
        program.start();
        program.add(QStringLiteral("a"));
        const int writes = program.fakes.preferences->writeCount();
        program.delegate.reset();
        QCOMPARE(program.fakes.preferences->writeCount(), writes);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::AppDelegateTest)
#include "app_delegate_test.moc"
