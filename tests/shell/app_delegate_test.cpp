// SPDX-License-Identifier: MIT
#include "shell/program_on_fakes.h"
#include "support/log_capture.h"
#include "support/test_case.h"
#include "views/panel_row_widget.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QScreen>

namespace wrenfold {

namespace {

const QString hideText = QStringLiteral("Wren Fold を隠す"); ///< Of the menu's entry.
const QString hideButton = QStringLiteral("パネルを隠す");

} // namespace

class AppDelegateTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aRenameThatIsOpenAtTheEndIsKept_data()
    {
        QTest::addColumn<bool>("isActive");
        QTest::newRow("in the active window") << true;
        QTest::newRow("while another window is active") << false;
    }

    void aRenameThatIsOpenAtTheEndIsKept()
    {
        QFETCH(bool, isActive);
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
        QWidget other;
        if (!isActive) {
            other.show();
            QVERIFY(QTest::qWaitForWindowActive(&other));
        }
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

    void theStartAsksTheLoginItemAndChangesNothingThere()
    {
        Program program;
        QJsonObject document =
            QJsonDocument::fromJson(program.fakes.preferences->read(FocusStore::storageKey()).bytes).object();
        document.insert(QStringLiteral("launchAtLogin"), true);
        program.fakes.preferences->setValue(FocusStore::storageKey(), QJsonDocument(document).toJson());
        program.delegate = std::make_unique<AppDelegate>(program.fakes.platform);
        LogCapture log;
        program.delegate->applicationDidFinishLaunching();
        QCOMPARE(program.fakes.loginItem->changeCount(), 0);
        QVERIFY(log.take().filter(QStringLiteral(" login: ")).isEmpty());
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
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("^saving failed: cannot write ")));
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
