// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "support/log_capture.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

const QByteArray undecodable = "{\"tasks\":[], not JSON";

using Operation = std::function<void(StoreOnFakes &)>;

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

/// a (a1, NOW), b (done), c (deferred), d
TaskList sampleList()
{
    const TaskItem a = madeTask(u("a"), 1);
    return {a, madeSubtask(u("a1"), a), done(madeTask(u("b"), 2)), deferred(madeTask(u("c"), 3)),
            madeTask(u("d"), 4)};
}

/// Keeps every document that is written.
struct Recorder : Preferences
{
    FakePreferences stored;
    QList<SavedState> written;

    [[nodiscard]] ReadResult read(const QString &key) const override { return stored.read(key); }
    [[nodiscard]] std::optional<QString> write(const QString &key, const QByteArray &bytes) override
    {
        written << decodeSavedState(bytes).value();
        return stored.write(key, bytes);
    }
    [[nodiscard]] std::optional<QString> keepAside(const QString &key) override
    {
        return stored.keepAside(key);
    }
};

} // namespace

} // namespace wrenfold

Q_DECLARE_METATYPE(wrenfold::Operation)

namespace wrenfold {

/// When the document is written, and what happens when it cannot be.
class FocusStoreSavingTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyOperationWritesOnceOrNotAtAll_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<int>("writes");
        const auto row = [](const char *name, int writes, Operation operation) {
            QTest::newRow(name) << operation << writes;
        };
        row("addTask", 1, [](auto &s) { s.store.addTask(u("x"), false); });
        row("addTask as NOW", 1, [](auto &s) { s.store.addTask(u("x"), true); });
        row("addTask of blanks", 0, [](auto &s) { s.store.addTask(u(" \n"), true); });
        row("addTask under a parent", 1, [](auto &s) { s.store.addTask(u("x"), true, s.task(u("d")).id); });
        row("addSubtask", 1, [](auto &s) { s.store.addSubtask(s.task(u("a")).id, u("x")); });
        row("addSubtask to nothing", 0, [](auto &s) { s.store.addSubtask(QUuid::createUuid(), u("x")); });
        row("beginAddSubtask", 0, [](auto &s) { s.store.beginAddSubtask(s.task(u("a"))); });
        row("endAddSubtask", 0, [](auto &s) { s.store.endAddSubtask(); });
        row("requestTodoInput", 0, [](auto &s) { s.store.requestTodoInput(); });
        row("toggleDone", 1, [](auto &s) { s.store.toggleDone(s.task(u("d"))); });
        row("toggleDone of NOW", 1, [](auto &s) { s.store.toggleDone(s.task(u("a1"))); });
        row("toggleDone of an unknown task", 0, [](auto &s) { s.store.toggleDone(madeTask(u("x"))); });
        row("setActive", 1, [](auto &s) { s.store.setActive(s.task(u("d"))); });
        row("setActive of NOW", 0, [](auto &s) { s.store.setActive(s.task(u("a1"))); });
        row("setActive of a done task", 0, [](auto &s) { s.store.setActive(s.task(u("b"))); });
        row("toggleExpanded", 1, [](auto &s) { s.store.toggleExpanded(s.task(u("a"))); });
        row("toggleExpanded without subtasks", 0, [](auto &s) { s.store.toggleExpanded(s.task(u("d"))); });
        row("updateTaskTitle", 1, [](auto &s) { s.store.updateTaskTitle(s.task(u("d")), u("x")); });
        row("updateTaskTitle to the same", 0,
            [](auto &s) { s.store.updateTaskTitle(s.task(u("d")), u(" d")); });
        row("deleteTask", 1, [](auto &s) { s.store.deleteTask(s.task(u("a"))); });
        row("deleteTask of an unknown task", 0, [](auto &s) { s.store.deleteTask(madeTask(u("x"))); });
        row("deferTask", 1,
            [](auto &s) { s.store.deferTask(s.task(u("a")), TaskQuadrant::urgentImportant); });
        row("deferTask again", 0,
            [](auto &s) { s.store.deferTask(s.task(u("c")), TaskQuadrant::notUrgentNotImportant); });
        row("restoreDeferredTask", 1, [](auto &s) { s.store.restoreDeferredTask(s.task(u("c"))); });
        row("setQuadrant", 1,
            [](auto &s) { s.store.setQuadrant(TaskQuadrant::urgentImportant, s.task(u("a"))); });
        row("setQuadrant to the same", 0,
            [](auto &s) { s.store.setQuadrant(TaskQuadrant::notUrgentNotImportant, s.task(u("a"))); });
        row("clearCompleted", 1, [](auto &s) { s.store.clearCompleted(); });
        row("undo of nothing", 0, [](auto &s) { s.store.undo(); });
        row("redo of nothing", 0, [](auto &s) { s.store.redo(); });
        row("setSortStatus", 0, [](auto &s) { s.store.setSortStatus(u("x")); });
        row("applyPriorityOrder", 1, [](auto &s) { s.store.applyPriorityOrder({}); });
        row("moveTask", 1, [](auto &s) { s.store.moveTask(s.task(u("a")).id, s.task(u("d")).id, true); });
        row("moveTask to its place", 0,
            [](auto &s) { s.store.moveTask(s.task(u("a")).id, s.task(u("b")).id, false); });
        row("a drag that moves once", 1, [](auto &s) {
            s.store.beginTaskReorder();
            s.store.moveTask(s.task(u("a")).id, s.task(u("d")).id, true);
            s.store.endTaskReorder();
        });
        row("a drag that is abandoned", 2, [](auto &s) {
            s.store.beginTaskReorder();
            s.store.moveTask(s.task(u("a")).id, s.task(u("d")).id, true);
            s.store.cancelTaskReorder();
        });
        row("a drag without a move", 0, [](auto &s) {
            s.store.beginTaskReorder();
            s.store.cancelTaskReorder();
        });
        row("setWorkDurationMinutes", 1, [](auto &s) { s.store.setWorkDurationMinutes(30); });
        row("setBreakDurationMinutes", 1, [](auto &s) { s.store.setBreakDurationMinutes(10); });
        row("six seconds later", 1, [](auto &s) {
            s.store.clearCompleted();
            s.clock.advance(std::chrono::seconds(7));
        });
    }

    void everyOperationWritesOnceOrNotAtAll()
    {
        QFETCH(Operation, operation);
        QFETCH(int, writes);
        const TaskList tasks = sampleList();
        StoreOnFakes s(tasks, tasks[1].id);
        operation(s);
        QCOMPARE(s.preferences.writeCount(), writes);
        if (writes > 0) {
            QCOMPARE(s.saved().tasks, s.store.tasks.value());
            QCOMPARE(s.saved().activeTaskID, s.store.activeTaskID.value());
        }
    }

    void undoAndRedoWriteOnceEach()
    {
        const TaskList tasks = sampleList();
        StoreOnFakes s(tasks, tasks[1].id);
        s.store.toggleDone(tasks[1]);
        s.store.undo();
        QCOMPARE(s.preferences.writeCount(), 2);
        QCOMPARE(s.saved().tasks, tasks);
        s.store.redo();
        QCOMPARE(s.preferences.writeCount(), 3);
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
    }

    void everySettingIsWrittenOncePerChange()
    {
        StoreOnFakes s(TaskList{});
        int expected = 0;
        const auto checkSetting = [&](auto &property, auto value, auto member) {
            property.set(value);
            QCOMPARE(s.preferences.writeCount(), ++expected);
            QCOMPARE(s.saved().*member, value);
            property.set(value);
            QCOMPARE(s.preferences.writeCount(), expected);
        };
        FocusStore &store = s.store;
        checkSetting(store.mediumGoal, u("x"), &SavedState::mediumGoal);
        checkSetting(store.isTodoListHidden, true, &SavedState::isTodoListHidden);
        checkSetting(store.isHardPinned, false, &SavedState::isHardPinned);
        checkSetting(store.isCompletedSectionExpanded, true, &SavedState::isCompletedSectionExpanded);
        checkSetting(store.isDeferredSectionExpanded, false, &SavedState::isDeferredSectionExpanded);
        checkSetting(store.isQuadrantBoardVisible, true, &SavedState::isQuadrantBoardVisible);
        checkSetting(store.isFocusGuardEnabled, true, &SavedState::isFocusGuardEnabled);
        checkSetting(store.sprintNudgesEnabled, false, &SavedState::sprintNudgesEnabled);
        checkSetting(store.alwaysShowMenubarTimer, false, &SavedState::alwaysShowMenubarTimer);
        checkSetting(store.selectedAIProvider, AIProvider::codex, &SavedState::selectedAIProvider);
        checkSetting(store.apiKeyOverride, u("x"), &SavedState::apiKeyOverride);
        checkSetting(store.openRouterModel, u("x"), &SavedState::openRouterModel);
        checkSetting(store.codexIntegrationEnabled, true, &SavedState::codexIntegrationEnabled);
        checkSetting(store.chatGPTIntegrationEnabled, true, &SavedState::chatGPTIntegrationEnabled);
        checkSetting(store.ollamaIntegrationEnabled, true, &SavedState::ollamaIntegrationEnabled);
        checkSetting(store.ollamaBaseURL, u("x"), &SavedState::ollamaBaseURL);
        checkSetting(store.autoSortAfterAdding, true, &SavedState::autoSortAfterAdding);
    }

    void durationsAreKeptInRangeAndSaved()
    {
        StoreOnFakes s(TaskList{});
        s.store.setWorkDurationMinutes(0);
        s.store.setBreakDurationMinutes(31);
        QCOMPARE(s.saved().workDurationMinutes, 1);
        QCOMPARE(s.saved().breakDurationMinutes, 30);
        s.store.setWorkDurationMinutes(-7);
        QCOMPARE(s.preferences.writeCount(), 2);
    }

    void whatHoldsOnlyWhileTheProgramRunsIsNotSaved()
    {
        StoreOnFakes s(TaskList{});
        s.store.isGhostMode.set(true);
        s.store.isReorderKeyPressed.set(true);
        s.store.isQuadrantDropActive.set(true);
        QCOMPARE(s.preferences.writeCount(), 0);
    }

    void whoeverIsToldOfAChangeFindsItSavedAndReadsTheNewValues()
    {
        const TaskList tasks = sampleList();
        StoreOnFakes s(tasks, tasks[1].id);
        int calls = 0;
        const auto check = [&] {
            ++calls;
            QCOMPARE(s.saved().tasks, s.store.tasks.value());
            QCOMPARE(s.saved().activeTaskID, s.store.activeTaskID.value());
            QVERIFY(s.task(u("a1")).isDone);
            QCOMPARE(s.now(), u("d"));
            QVERIFY(s.store.canUndo.value());
        };
        const Subscription onTasks = s.store.tasks.onChange([&](const TaskList &list) {
            QCOMPARE(list, s.store.tasks.value());
            check();
        });
        const Subscription onNow =
            s.store.activeTaskID.onChange([&](const std::optional<QUuid> &) { check(); });
        const Subscription onUndo = s.store.canUndo.onChange([&](bool) { check(); });
        s.store.toggleDone(tasks[1]);
        QCOMPARE(calls, 3);
        QCOMPARE(s.preferences.writeCount(), 1);
    }

    void halfDoneStatesNeverReachTheDisk()
    {
        Recorder preferences;
        const TaskList tasks = sampleList();
        preferences.stored = StoreOnFakes::preferencesWith(StoreOnFakes::documentWith(tasks, tasks[1].id));
        FakeClock clock;
        QuietServices quiet;
        FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
        store.moveTask(tasks[0].id, tasks[4].id, true);
        store.toggleDone(tasks[1]);
        store.deferTask(tasks[0], TaskQuadrant::urgentImportant);
        store.applyPriorityOrder({});
        store.undo();
        QCOMPARE(preferences.written.size(), 5);
        for (const SavedState &state : preferences.written) {
            QCOMPARE(state.tasks.size(), tasks.size());
            const TaskItem *now = state.activeTaskID ? findTask(state.tasks, *state.activeTaskID) : nullptr;
            QVERIFY(!state.activeTaskID || (now && now->isOpen()));
        }
    }

    void anUndecodableDocumentIsKeptAsideBeforeTheFirstSave()
    {
        StoreOnFakes s(undecodable);
        QCOMPARE(s.store.tasks.value().size(), 2);
        QCOMPARE(s.preferences.keptAside(FocusStore::storageKey()), QList<QByteArray>());
        s.store.addTask(u("x"), false);
        QCOMPARE(s.preferences.keptAside(FocusStore::storageKey()), QList<QByteArray>{undecodable});
        QCOMPARE(s.saved().tasks.size(), 3);
        s.store.addTask(u("y"), false);
        QCOMPARE(s.preferences.keptAside(FocusStore::storageKey()).size(), 1);
        QCOMPARE(s.preferences.writeCount(), 2);
    }

    void anUnreadableDocumentIsKeptAsideToo()
    {
        FakePreferences preferences;
        preferences.makeUnreadable(FocusStore::storageKey());
        FakeClock clock;
        QuietServices quiet;
        FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
        QCOMPARE(store.tasks.value().size(), 2);
        store.addTask(u("x"), false);
        QCOMPARE(preferences.keptAside(FocusStore::storageKey()).size(), 1);
        QVERIFY(decodeSavedState(preferences.read(FocusStore::storageKey()).bytes));
    }

    void aSoundDocumentIsNotKeptAside()
    {
        StoreOnFakes s(sampleList());
        s.store.addTask(u("x"), false);
        QCOMPARE(s.preferences.keptAside(FocusStore::storageKey()), QList<QByteArray>());
    }

    void aSaveThatCannotKeepTheDocumentAsideFailsAndIsTriedAgain()
    {
        StoreOnFakes s(undecodable);
        s.preferences.failNextKeepsAside(2);
        const LogCapture log;
        s.store.addTask(u("x"), false);
        QVERIFY(s.store.hasUnsavedChanges());
        s.store.addTask(u("y"), false);
        QCOMPARE(s.document(), undecodable);
        QCOMPARE(s.preferences.writeCount(), 0);
        QCOMPARE(log.take().size(), 1);
        s.store.addTask(u("z"), false);
        QVERIFY(!s.store.hasUnsavedChanges());
        QCOMPARE(s.preferences.keptAside(FocusStore::storageKey()), QList<QByteArray>{undecodable});
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
    }

    void aDocumentKeptAsideIsNotKeptAgainWhenTheWriteBehindItFails()
    {
        StoreOnFakes s(undecodable);
        s.preferences.failNextWrites(1);
        const LogCapture log;
        s.store.addTask(u("x"), false);
        s.store.addTask(u("y"), false);
        QCOMPARE(s.preferences.keptAside(FocusStore::storageKey()), QList<QByteArray>{undecodable});
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
    }

    void oneLineIsLoggedWhenSavingBeginsToFailAndOneWhenItWorksAgain()
    {
        StoreOnFakes s(sampleList());
        const QByteArray before = s.document();
        s.preferences.failNextWrites(3);
        const LogCapture log;
        s.store.addTask(u("x"), false);
        const QStringList lines = log.take();
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines.first().startsWith(QStringLiteral("warning store: saving failed: cannot write")));
        QVERIFY(s.store.hasUnsavedChanges());
        s.store.addTask(u("y"), false);
        s.store.undo();
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(s.document(), before);
        s.store.redo();
        QCOMPARE(log.take(), QStringList{QStringLiteral("info store: saving works again")});
        QVERIFY(!s.store.hasUnsavedChanges());
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
        s.store.undo();
        QCOMPARE(log.take(), QStringList());
    }

    void aFailedSaveIsTriedAgainByTheNextChangeOfAnything()
    {
        StoreOnFakes s(sampleList());
        s.preferences.failNextWrites(1);
        const LogCapture log;
        s.store.addTask(u("x"), false);
        s.store.isTodoListHidden.set(true);
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
    }

    void saveWritesTheDocumentNow()
    {
        StoreOnFakes s(sampleList());
        s.store.save();
        QCOMPARE(s.preferences.writeCount(), 1);
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreSavingTest)
#include "focus_store_saving_test.moc"
