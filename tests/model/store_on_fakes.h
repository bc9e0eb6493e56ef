// SPDX-License-Identifier: MIT
#pragma once

#include "ai/openrouter_task_sorter.h"
#include "model/focus_store.h"
#include "model/task_list.h"
#include "notify/app_notifier.h"
#include "support/fake_clock.h"
#include "support/fake_folder_watch.h"
#include "support/fake_login_item.h"
#include "support/fake_notification_center.h"
#include "support/fake_preferences.h"
#include "support/fake_sounds.h"

#include <QTest>

namespace wrenfold {

/// A task for a test, with an identifier of its own.
inline TaskItem madeTask(const QString &title, double createdAt = 0)
{
    return TaskItem::make(title, Timestamp{createdAt});
}

inline TaskItem madeSubtask(const QString &title, const TaskItem &parent)
{
    TaskItem task = madeTask(title);
    task.parentID = parent.id;
    return task;
}

inline TaskItem done(TaskItem task)
{
    task.isDone = true;
    task.completedAt = Timestamp{1};
    return task;
}

inline TaskItem deferred(TaskItem task)
{
    task.isDeferred = true;
    return task;
}

inline QStringList titlesOf(const TaskList &tasks)
{
    QStringList titles;
    for (const TaskItem &task : tasks)
        titles.append(task.title);
    return titles;
}

/// The titles in a short form: "a b c".
inline QString words(const TaskList &tasks)
{
    return titlesOf(tasks).join(QLatin1Char(' '));
}

/// A store with nothing real around it.
struct StoreOnFakes
{
    FakePreferences preferences;
    FakeClock clock;
    FakeNotificationCenter notificationCenter;
    FakeSounds sounds;
    FakeFolderWatch folderWatch;
    FakeLoginItem loginItem;
    AppNotifier notifier{notificationCenter};
    OpenRouterTaskSorter sorter; ///< Asks nobody, unless an origin is given.
    FocusStore store;

    /// A store that has loaded a document with this list, as an earlier run would have left it.
    explicit StoreOnFakes(const TaskList &tasks, std::optional<QUuid> activeTaskID = std::nullopt,
                          const ServiceOrigin &origin = noService())
        : StoreOnFakes(documentWith(tasks, activeTaskID), origin)
    {
    }

    /// A store that has loaded this document.
    explicit StoreOnFakes(const QByteArray &document, const ServiceOrigin &origin = noService())
        : preferences(preferencesWith(document))
        , sorter(origin)
        , store({preferences, clock, notifier, sounds, sorter, folderWatch, loginItem},
                {.monitorInbox = false})
    {
    }

    static ServiceOrigin noService() { return {{}, QStringLiteral("no service here")}; }

    static QByteArray documentWith(const TaskList &tasks, std::optional<QUuid> activeTaskID = std::nullopt)
    {
        SavedState state;
        state.tasks = tasks;
        state.activeTaskID = activeTaskID;
        return encodeSavedState(state);
    }

    static FakePreferences preferencesWith(const QByteArray &document)
    {
        FakePreferences preferences;
        preferences.setValue(FocusStore::storageKey(), document);
        return preferences;
    }

    /// The task of this title; the first one when there are several.
    [[nodiscard]] TaskItem task(const QString &title) const
    {
        for (const TaskItem &task : store.tasks.value()) {
            if (task.title == title)
                return task;
        }
        QTest::qFail(qPrintable(QStringLiteral("there is no task ") + title), __FILE__, __LINE__);
        return {};
    }

    [[nodiscard]] QString titles() const { return words(store.tasks.value()); }

    /// The title of the NOW task, empty when there is none.
    [[nodiscard]] QString now() const
    {
        const std::optional<TaskItem> task = store.activeTask();
        return task ? task->title : QString();
    }

    /// The document as it is stored now.
    [[nodiscard]] QByteArray document() const { return preferences.read(FocusStore::storageKey()).bytes; }
    [[nodiscard]] SavedState saved() const { return decodeSavedState(document()).value(); }

    /// The name of the change that undo() would take back now. Takes it back and does it again.
    [[nodiscard]] QString undoName()
    {
        store.undo();
        QString text = store.sortStatus.value();
        store.redo();
        return text.remove(QStringLiteral("を元に戻しました"));
    }
};

} // namespace wrenfold
