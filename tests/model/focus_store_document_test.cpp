// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "support/log_capture.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <bit>
#include <cmath>

namespace wrenfold {

namespace {

const QString firstTitle = QStringLiteral("今やることをここに固定");
const QString secondTitle = QStringLiteral("忘れたくない小タスクを追加");

/// A smallest document with one more member, given as JSON text.
QByteArray documentWithMember(const QByteArray &member)
{
    return R"({"tasks":[],"isHardPinned":true,)" + member + '}';
}

} // namespace

/// Loading, and what a load makes of a document.
class FocusStoreDocumentTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstLaunchHasTwoTasksAndAGoal()
    {
        FakePreferences preferences;
        FakeClock clock;
        LogCapture log;
        QuietServices quiet;
        FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
        QCOMPARE(log.take(), QStringList{QStringLiteral("info store: loaded defaults (first launch)")});
        const TaskList tasks = store.tasks.value();
        QCOMPARE(titlesOf(tasks), (QStringList{firstTitle, secondTitle}));
        for (const TaskItem &task : tasks) {
            TaskItem expected = TaskItem::make(task.title, Timestamp::fromDateTime(clock.now()));
            expected.id = task.id;
            QCOMPARE(task, expected);
        }
        QVERIFY(tasks[0].id != tasks[1].id);
        QCOMPARE(store.activeTaskID.value(), std::optional(tasks[0].id));
        QCOMPARE(store.mediumGoal.value(), QStringLiteral("今週の軸を決める"));
        QVERIFY(!store.canUndo.value());
    }

    void everyPropertyHasItsInitialValue()
    {
        FakePreferences preferences;
        FakeClock clock;
        QuietServices quiet;
        const FocusStore store(quiet.with(preferences, clock),
                               {.loadSavedState = false, .monitorInbox = false});
        QCOMPARE(store.tasks.value(), TaskList());
        QCOMPARE(store.activeTaskID.value(), std::nullopt);
        QCOMPARE(store.mediumGoal.value(), QString());
        QCOMPARE(store.remainingSeconds.value(), 1500);
        QCOMPARE(store.isTimerRunning.value(), false);
        QCOMPARE(store.timerPhase.value(), PomodoroPhase::work);
        QCOMPARE(store.workDurationMinutes.value(), 25);
        QCOMPARE(store.breakDurationMinutes.value(), 5);
        QCOMPARE(store.sprintNudgesEnabled.value(), true);
        QCOMPARE(store.alwaysShowMenubarTimer.value(), true);
        QCOMPARE(store.isGhostMode.value(), false);
        QCOMPARE(store.isHardPinned.value(), true);
        QCOMPARE(store.launchAtLogin.value(), false);
        QCOMPARE(store.loginItemStatus.value(), QString());
        QCOMPARE(store.subtaskComposerParentID.value(), std::nullopt);
        QCOMPARE(store.isTodoListHidden.value(), false);
        QCOMPARE(store.isFocusGuardEnabled.value(), false);
        const QString line = QStringLiteral("jp.naver.line.mac");
        const QList<BlockedApp> apps = {{line, QStringLiteral("LINE"), line, std::nullopt}};
        QCOMPARE(store.blockedApps.value(), apps);
        QCOMPARE(store.isSortingTasks.value(), false);
        QCOMPARE(store.sortStatus.value(), QString());
        QCOMPARE(store.apiImportStatus.value(), QString());
        QCOMPARE(store.composerFocusToken.value(), 0);
        QCOMPARE(store.isReorderKeyPressed.value(), false);
        QCOMPARE(store.isCompletedSectionExpanded.value(), false);
        QCOMPARE(store.isDeferredSectionExpanded.value(), true);
        QCOMPARE(store.isQuadrantBoardVisible.value(), false);
        QCOMPARE(store.isQuadrantDropActive.value(), false);
        QCOMPARE(store.pendingUndo.value(), std::nullopt);
        QCOMPARE(store.selectedAIProvider.value(), AIProvider::openRouter);
        QCOMPARE(store.apiKeyOverride.value(), QString());
        QCOMPARE(store.openRouterModel.value(), QStringLiteral("~anthropic/claude-sonnet-latest"));
        QCOMPARE(store.codexIntegrationEnabled.value(), false);
        QCOMPARE(store.chatGPTIntegrationEnabled.value(), false);
        QCOMPARE(store.ollamaIntegrationEnabled.value(), false);
        QCOMPARE(store.ollamaBaseURL.value(), QStringLiteral("http://127.0.0.1:11434"));
        QCOMPARE(store.autoSortAfterAdding.value(), false);
        QCOMPARE(store.inboxItems.value(), QList<InboxItem>());
        QCOMPARE(store.canUndo.value(), false);
        QCOMPARE(store.canRedo.value(), false);
        QCOMPARE(FocusStore::storageKey(), QStringLiteral("Wrenfold.State.v1"));
    }

    void aDocumentWithoutIsHardPinnedLoadsAsFirstLaunch()
    {
        const QByteArray task = encodeTask(madeTask(QStringLiteral("mine")));
        const StoreOnFakes s(QByteArray(R"({"tasks":[)" + task + "]}"));
        QCOMPARE(titlesOf(s.store.tasks.value()), (QStringList{firstTitle, secondTitle}));
    }

    void tasksEmptyAndIsHardPinnedFalseLoadsWithTheDefaults()
    {
        const StoreOnFakes s(QByteArray(R"({"tasks":[],"isHardPinned":false})"));
        QCOMPARE(s.store.tasks.value(), TaskList());
        QCOMPARE(s.store.activeTaskID.value(), std::nullopt);
        QVERIFY(!s.store.isHardPinned.value());
        QVERIFY(s.store.isDeferredSectionExpanded.value());
        QVERIFY(s.store.sprintNudgesEnabled.value());
        QVERIFY(s.store.alwaysShowMenubarTimer.value());
        QCOMPARE(s.store.blockedApps.value(), defaultBlockedApps());
        QCOMPARE(s.store.mediumGoal.value(), QString());
    }

    void aLegacyBlockedAppNamesListYieldsBlockedAppsOfThatName()
    {
        const StoreOnFakes s(documentWithMember(R"("blockedAppNames":["Chat"])"));
        const QString name = QStringLiteral("Chat");
        QCOMPARE(s.store.blockedApps.value(), (QList<BlockedApp>{{name, name, std::nullopt, std::nullopt}}));
    }

    void openRouterAutoLoadsAsTheModelOfTodayAndAnyOtherIsKept()
    {
        QCOMPARE(StoreOnFakes(documentWithMember(R"("openRouterModel":"openrouter/auto")"))
                     .store.openRouterModel.value(),
                 QStringLiteral("~anthropic/claude-sonnet-latest"));
        QCOMPARE(StoreOnFakes(documentWithMember(R"("openRouterModel":"some/model")"))
                     .store.openRouterModel.value(),
                 QStringLiteral("some/model"));
    }

    void durationsOutOfRangeAreClamped_data()
    {
        QTest::addColumn<QByteArray>("member");
        QTest::addColumn<int>("work");
        QTest::addColumn<int>("pause");
        QTest::newRow("work 0") << QByteArray(R"("workDurationMinutes":0)") << 1 << 5;
        QTest::newRow("work 500") << QByteArray(R"("workDurationMinutes":500)") << 90 << 5;
        QTest::newRow("break 45") << QByteArray(R"("breakDurationMinutes":45)") << 25 << 30;
        QTest::newRow("break -1") << QByteArray(R"("breakDurationMinutes":-1)") << 25 << 1;
        QTest::newRow("in range") << QByteArray(R"("workDurationMinutes":90,"breakDurationMinutes":1)") << 90
                                  << 1;
        QTest::newRow("huge") << QByteArray(R"("workDurationMinutes":9223372036854775807)") << 90 << 5;
    }

    void durationsOutOfRangeAreClamped()
    {
        QFETCH(QByteArray, member);
        const StoreOnFakes s(documentWithMember(member));
        QTEST(int(s.store.workDurationMinutes.value()), "work");
        QTEST(int(s.store.breakDurationMinutes.value()), "pause");
    }

    void aSavedNowTaskThatIsNotOpenIsReplacedByTheFirstOpenOne_data()
    {
        QTest::addColumn<int>("now");
        QTest::addColumn<QString>("expected");
        QTest::newRow("deferred") << 1 << "c";
        QTest::newRow("done") << 0 << "c";
        QTest::newRow("missing") << -1 << "c";
        QTest::newRow("open") << 3 << "d";
    }

    void aSavedNowTaskThatIsNotOpenIsReplacedByTheFirstOpenOne()
    {
        QFETCH(int, now);
        const TaskList tasks = {done(madeTask(QStringLiteral("a"))), deferred(madeTask(QStringLiteral("b"))),
                                madeTask(QStringLiteral("c")), madeTask(QStringLiteral("d"))};
        const StoreOnFakes s(tasks, now < 0 ? QUuid::createUuid() : tasks[now].id);
        QTEST(s.now(), "expected");
    }

    void aSavedNowTaskThatIsNotOpenBecomesNoneWhenNothingIsOpen()
    {
        const TaskItem b = deferred(madeTask(QStringLiteral("b")));
        QCOMPARE(StoreOnFakes({b}, b.id).store.activeTaskID.value(), std::nullopt);
    }

    void aDocumentWithoutNowTaskLoadsWithoutOne()
    {
        QCOMPARE(StoreOnFakes({madeTask(QStringLiteral("a"))}).store.activeTaskID.value(), std::nullopt);
    }

    void noSecondLevelIsLoaded()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const TaskItem b = madeSubtask(QStringLiteral("b"), a);
        const TaskItem lost = madeSubtask(QStringLiteral("lost"), madeTask(QStringLiteral("gone")));
        const StoreOnFakes s({a, b, madeSubtask(QStringLiteral("c"), b), lost});
        QCOMPARE(s.task(QStringLiteral("b")).parentID, std::optional(a.id));
        QVERIFY(s.task(QStringLiteral("c")).isTopLevel());
        QVERIFY(s.task(QStringLiteral("lost")).isTopLevel());
    }

    void repeatedIdentifiersAreLoadedAsTasksOfTheirOwn()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        TaskItem copy = a;
        copy.title = QStringLiteral("copy");
        const StoreOnFakes s({a, copy, copy}, a.id);
        QCOMPARE(s.titles(), QStringLiteral("a copy copy"));
        const TaskList tasks = s.store.tasks.value();
        QCOMPARE((QSet<QUuid>{tasks[0].id, tasks[1].id, tasks[2].id}).size(), 3);
        QCOMPARE(s.now(), QStringLiteral("a"));
    }

    void loadingLogsWhatWasLoaded()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const LogCapture log;
        const StoreOnFakes s({a, madeSubtask(QStringLiteral("a1"), a), done(madeTask(QStringLiteral("b"))),
                              deferred(madeTask(QStringLiteral("c"))), madeTask(QStringLiteral("d"))});
        QCOMPARE(log.take(), QStringList{QStringLiteral(
                                 "info store: loaded tasks=5 open=2 work=25m break=5m login=false")});
    }

    void theStoredLaunchSwitchIsNotUsed()
    {
        const StoreOnFakes s(documentWithMember(R"("launchAtLogin":true)"));
        QVERIFY(!s.store.launchAtLogin.value());
    }

    void nothingIsWrittenByLoading_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::newRow("sound") << StoreOnFakes::documentWith({madeTask(QStringLiteral("a"))});
        QTest::newRow("to be repaired")
            << StoreOnFakes::documentWith({deferred(madeTask(QStringLiteral("a")))}, QUuid::createUuid());
        QTest::newRow("clamped") << documentWithMember(R"("workDurationMinutes":0)");
        QTest::newRow("undecodable") << QByteArray("?");
    }

    void nothingIsWrittenByLoading()
    {
        QFETCH(QByteArray, document);
        FakePreferences preferences = StoreOnFakes::preferencesWith(document);
        FakeClock clock;
        {
            QuietServices quiet;
            const FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
            clock.advance(std::chrono::hours(1));
        }
        QCOMPARE(preferences.writeCount(), 0);
        QCOMPARE(preferences.read(FocusStore::storageKey()).bytes, document);
        QCOMPARE(preferences.keptAside(FocusStore::storageKey()), QList<QByteArray>());
    }

    void nothingIsWrittenByTheFirstLaunch()
    {
        FakePreferences preferences;
        FakeClock clock;
        QuietServices quiet;
        const FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
        QCOMPARE(preferences.writeCount(), 0);
    }

    void aStoreWithoutSavedStateNeitherReadsNorWritesTheDocument()
    {
        FakePreferences preferences =
            StoreOnFakes::preferencesWith(StoreOnFakes::documentWith({madeTask(QStringLiteral("a"))}));
        FakeClock clock;
        QuietServices quiet;
        FocusStore store(quiet.with(preferences, clock), {.loadSavedState = false, .monitorInbox = false});
        QCOMPARE(store.tasks.value(), TaskList());
        store.addTask(QStringLiteral("b"), true);
        store.mediumGoal.set(QStringLiteral("g"));
        store.save();
        QCOMPARE(preferences.writeCount(), 0);
    }

    void aWholeDocumentSurvivesLoadAndSave()
    {
        SavedState state;
        const TaskItem a = madeTask(
            QStringLiteral("👨‍👩‍👧‍👦\uFFFF\u2028") + QChar(0xD800) + QChar(0), 5e-324);
        TaskItem b = deferred(done(madeSubtask(QStringLiteral("b"), a)));
        b.completedAt = Timestamp{1.7976931348623157e308};
        b.quadrant = TaskQuadrant::importantNotUrgent;
        state.tasks = {a, b};
        state.activeTaskID = a.id;
        state.blockedApps = {{QStringLiteral("i"), QStringLiteral("n"), std::nullopt, QStringLiteral("/p")}};
        state.isTodoListHidden = state.isFocusGuardEnabled = true;
        state.selectedAIProvider = AIProvider::chatGPT;
        state.apiKeyOverride = QStringLiteral("key");
        state.openRouterModel = QStringLiteral("m");
        state.codexIntegrationEnabled = state.chatGPTIntegrationEnabled = state.ollamaIntegrationEnabled =
            true;
        state.ollamaBaseURL = QStringLiteral("http://[::1]");
        state.autoSortAfterAdding = state.isCompletedSectionExpanded = state.isQuadrantBoardVisible = true;
        state.isDeferredSectionExpanded = state.isHardPinned = false;
        state.workDurationMinutes = 50;
        state.breakDurationMinutes = 10;
        state.sprintNudgesEnabled = state.alwaysShowMenubarTimer = false;
        StoreOnFakes s(encodeSavedState(state));
        s.store.mediumGoal.set(QStringLiteral("changed"));
        state.mediumGoal = QStringLiteral("changed");
        QCOMPARE(s.document(), encodeSavedState(state));
    }

    void aDateSurvivesLoadAndSaveBitForBit_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const auto *text : {"0", "25", "25.0", "-1", "1e300", "1e-300", "5e-324",
                                 "1.7976931348623157e308", "-1.7976931348623157e308", "795484800.1234567",
                                 "795484800", "0.1", "9007199254740993", "9223372036854775807", "1e22"})
            QTest::newRow(text) << QByteArray(text);
    }

    void aDateSurvivesLoadAndSaveBitForBit()
    {
        QFETCH(QByteArray, text);
        const QByteArray task = encodeTask(madeTask(QStringLiteral("a"), 0.5)).replace("0.5", text);
        StoreOnFakes s(QByteArray(R"({"isHardPinned":true,"tasks":[)" + task + "]}"));
        s.store.mediumGoal.set(QStringLiteral("g"));
        const double expected = text.toDouble();
        QCOMPARE(std::bit_cast<quint64>(s.saved().tasks.first().createdAt.secondsSince2001),
                 std::bit_cast<quint64>(expected));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreDocumentTest)
#include "focus_store_document_test.moc"
