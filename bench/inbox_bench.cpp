// SPDX-License-Identifier: MIT
#include "ai/openrouter_task_sorter.h"
#include "inbox/inbox_watcher.h"
#include "model/focus_store.h"
#include "notify/app_notifier.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/inotify_folder_watch.h"
#include "platform/none/no_sounds.h"
#include "platform/system_clock.h"
#include "support/bench_file_system.h"
#include "support/budget.h"
#include "support/fake_login_item.h"
#include "support/fake_notification_center.h"
#include "support/sample_state.h"
#include "support/turns_of_the_loop.h"
#include "views/focus_panel_view.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QTimeZone>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <thread>

namespace {

using namespace wrenfold;

int reloads = 0; ///< As the program's log counts them.

void countReloads(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (text.startsWith(QLatin1String("inbox reloaded")))
        ++reloads;
    else if (type != QtInfoMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

/// The program as far as it has to do with the inbox: the folder watched, a store on a folder that is not flushed, and
/// the panel's content that shows it in a window. Everything in a home of its own.
class WatchedInbox
{
public:
    WatchedInbox()
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()));
        if (m_preferences.write(FocusStore::storageKey(), encodeSavedState(sampleState(50))))
            return;
        m_store.emplace(FocusStore::Services{m_preferences, m_clock, m_notifier, m_sounds, m_sorter,
                                             m_folderWatch, m_loginItem},
                        FocusStore::Options{});
        m_view = new FocusPanelView(*m_store, m_clock,
                                    {[] {}, [] {}, [](const QPoint &) {}, [](const QUrl &) {}, [] {}, [] {}},
                                    &m_window);
        m_window.resize(344, 500);
        m_view->setGeometry(m_window.rect());
        m_view->setFocus();
        m_window.show();
        m_store->save(); // Makes the day's copy.
    }

    [[nodiscard]] bool isReady() const { return m_store && m_window.isVisible(); }
    [[nodiscard]] FocusStore &store() { return *m_store; }
    [[nodiscard]] qsizetype count() const { return m_store->inboxItems.value().size(); }
    [[nodiscard]] qsizetype notifications() { return m_center.take().size(); }

    [[nodiscard]] bool isPanelShowing(qsizetype candidates) const
    {
        const QString name = QStringLiteral("INBOX %1").arg(candidates);
        const QList<QWidget *> widgets = m_view->findChildren<QWidget *>();
        return std::any_of(widgets.begin(), widgets.end(), [&](const QWidget *widget) {
            return widget->isVisible() && widget->accessibleName() == name;
        });
    }

private:
    BenchFolder m_home;
    SystemClock m_clock;
    FileSystemWithoutFlush m_fileSystem;
    FilePreferences m_preferences{m_home.path() + QLatin1String("/config"), m_clock, m_fileSystem};
    FakeNotificationCenter m_center;
    AppNotifier m_notifier{m_center};
    NoSounds m_sounds;
    InotifyFolderWatch m_folderWatch;
    FakeLoginItem m_loginItem;
    OpenRouterTaskSorter m_sorter{ServiceOrigin{{}, QStringLiteral("no service here")}};
    std::optional<FocusStore> m_store;
    QWidget m_window;
    FocusPanelView *m_view = nullptr;
};

/// As another program does it: each written beside the folder, then renamed into it.
void putCandidates(const QString &inbox, int count)
{
    const QDateTime first(QDate(2026, 1, 1), QTime(0, 0), QTimeZone::utc());
    for (int i = 0; i < count; ++i) {
        const QString beside = inbox + QLatin1String("/../candidate");
        QFile file(beside);
        if (!file.open(QIODevice::WriteOnly))
            return;
        file.write(QStringLiteral(R"({"text":"田中さんに資料 %1 を送る","source":"slack","url":)"
                                  R"("https://example.org/messages/%1","receivedAt":"%2"})")
                       .arg(QString::number(i), first.addSecs(i).toString(Qt::ISODate))
                       .toUtf8());
        file.close();
        QFile::rename(beside,
                      QStringLiteral("%1/message-%2.json").arg(inbox).arg(i, 6, 10, QLatin1Char('0')));
    }
}

void note(benchmark::State &state, const std::string &name, const Stall &stall)
{
    state.counters[name] = stall.passed;
    state.counters[name + "Worked"] = stall.worked;
}

/// All of them come while the panel is shown.
bool measureArrival(benchmark::State &state, WatchedInbox &inbox, int count)
{
    reloads = 0;
    QElapsedTimer sinceLast;
    TurnsOfTheLoop turns;
    std::thread other([&, folder = InboxWatcher::inboxDirectory().toLocalFile()] {
        putCandidates(folder, count);
        sinceLast.start();
    });
    const bool haveCome = turns.runUntil([&] { return inbox.count() == count; });
    other.join();
    turns.runTurns(5);
    state.counters["arrived"] = double(sinceLast.nsecsElapsed()) / 1e6;
    note(state, "arrival", turns.longest());
    state.counters["reloads"] = reloads;
    state.counters["notifications"] = double(inbox.notifications());
    return haveCome && inbox.isPanelShowing(count);
}

/// Everything is read anew, and is as it was.
bool measureReload(benchmark::State &state, WatchedInbox &inbox)
{
    const int before = reloads;
    QElapsedTimer time;
    time.start();
    TurnsOfTheLoop turns;
    inbox.store().reloadInbox(true);
    const bool isRead = turns.runUntil([&] { return reloads > before; });
    state.counters["unchanged"] = double(time.nsecsElapsed()) / 1e6;
    turns.runTurns(5);
    note(state, "unchangedStall", turns.longest());
    return isRead && inbox.notifications() == 0;
}

/// One in the middle becomes a task: saved, its file removed, the panel updated and painted. Then the reload that the
/// file's going leads to.
bool measureApproval(benchmark::State &state, WatchedInbox &inbox, int count)
{
    FocusStore &store = inbox.store();
    const InboxItem item = store.inboxItems.value()[count / 2];
    const int before = reloads;
    TurnsOfTheLoop turns;
    store.approveInboxItem(item, false);
    turns.runTurns(5);
    note(state, "approval", turns.longest());
    TurnsOfTheLoop turnsOfReload;
    const bool isRead = turnsOfReload.runUntil([&] { return reloads > before; });
    turnsOfReload.runTurns(5);
    note(state, "afterApproval", turnsOfReload.longest());
    return isRead && !store.hasUnsavedChanges() && !QFile::exists(item.fileURL.toLocalFile()) &&
           store.tasks.value().last().title == item.text && inbox.isPanelShowing(count - 1) &&
           inbox.notifications() == 0;
}

/// All that are left become tasks at once.
bool measureApprovalOfAll(benchmark::State &state, WatchedInbox &inbox)
{
    TurnsOfTheLoop turns;
    inbox.store().approveAllInboxItems();
    turns.runTurns(5);
    note(state, "approvalOfAll", turns.longest());
    return inbox.count() == 0 && !inbox.store().hasUnsavedChanges();
}

void candidates(benchmark::State &state)
{
    const int count = int(state.range(0));
    for (auto _ : state) {
        WatchedInbox inbox;
        if (!inbox.isReady())
            return state.SkipWithError("there is no panel");
        TurnsOfTheLoop().runTurns(20);
        if (!measureArrival(state, inbox, count))
            return state.SkipWithError("the candidates have not come");
        if (!measureReload(state, inbox))
            return state.SkipWithError("they were not read again, or announced again");
        if (!measureApproval(state, inbox, count))
            return state.SkipWithError("a candidate was not approved");
        if (!measureApprovalOfAll(state, inbox))
            return state.SkipWithError("not all were approved");
    }
}
BENCHMARK(candidates)->Arg(10'000)->Iterations(1);

std::vector<Budget> budgets()
{
    const auto line = [](const char *what, const char *unit, const char *counter,
                         std::optional<double> atMost) {
        return Budget{what, unit, "candidates/10000", "", counter, atMost};
    };
    return {
        line("inbox, 10,000 files come: longest stay away from the event loop", "ms", "arrival", 50),
        line("  in processor time", "ms", "arrivalWorked", {}),
        line("  from the last file to the panel showing them", "ms", "arrived", {}),
        line("  reloads", "", "reloads", 1),
        line("  notifications", "", "notifications", 1),
        line("inbox of 10,000 read again, nothing changed: longest stay", "ms", "unchangedStall", 50),
        line("  in processor time", "ms", "unchangedStallWorked", {}),
        line("  from the call to the end of it", "ms", "unchanged", {}),
        line("one candidate of 10,000 approved: longest stay", "ms", "approval", 50),
        line("  in processor time", "ms", "approvalWorked", {}),
        line("  longest stay of the reload that follows", "ms", "afterApproval", 50),
        line("all of 10,000 approved at once: longest stay", "ms", "approvalOfAll", {}),
        line("  in processor time", "ms", "approvalOfAllWorked", {}),
    };
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(countReloads);
    const QApplication application(argc, argv);
    return measureBudgets(argc, argv, budgets());
}
