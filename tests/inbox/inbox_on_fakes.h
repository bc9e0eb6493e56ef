// SPDX-License-Identifier: MIT
#pragma once

#include "inbox/candidate_json.h"
#include "inbox/inbox_watcher.h"
#include "model/store_on_fakes.h"
#include "support/files.h"

#include <QDir>
#include <QStringList>

namespace wrenfold {

/// The inbox folder in the data folder of the test, and what other programs do there. Empty and there at first.
class InboxFolder
{
public:
    InboxFolder()
    {
        remove();
        QDir().mkpath(path());
    }
    ~InboxFolder() { remove(); }

    [[nodiscard]] static QString path() { return InboxWatcher::inboxDirectory().toLocalFile(); }
    [[nodiscard]] static QString file(const QString &name) { return path() + u'/' + name; }

    static void write(const QString &name, const QByteArray &content) { putFile(file(name), content); }
    /// A candidate that was received so many seconds after a fixed moment.
    static void drop(const QString &name, const QString &text, int second = 0)
    {
        write(name, QString::fromUtf8(json("{'text':'%1','receivedAt':'2026-01-01T00:00:%2Z'}"))
                        .arg(text)
                        .arg(second, 2, 10, QLatin1Char('0'))
                        .toUtf8());
    }
    [[nodiscard]] static QStringList names() { return namesIn(path()); }

    static void remove() { QDir(path()).removeRecursively(); }
};

/// The texts of the candidates in a short form: "a b c".
[[nodiscard]] inline QString texts(const FocusStore &store)
{
    QStringList texts;
    for (const InboxItem &item : store.inboxItems.value())
        texts.append(item.text);
    return texts.join(QLatin1Char(' '));
}

/// A store that watches the inbox folder, whose events a test tells of.
struct Watching
{
    FakePreferences preferences;
    FakeClock clock;
    FakeNotificationCenter notificationCenter;
    FakeSounds sounds;
    FakeFolderWatch folderWatch;
    FakeLoginItem loginItem;
    AppNotifier notifier{notificationCenter};
    OpenRouterTaskSorter sorter{StoreOnFakes::noService()};
    FocusStore store;

    explicit Watching(const TaskList &tasks = {})
        : preferences(StoreOnFakes::preferencesWith(StoreOnFakes::documentWith(tasks, std::nullopt)))
        , store({preferences, clock, notifier, sounds, sorter, folderWatch, loginItem}, {})
    {
        clock.advance(std::chrono::milliseconds(0));
    }

    /// Something happened in the folder, and the burst is over.
    void settle(std::chrono::milliseconds time = std::chrono::milliseconds(200))
    {
        folderWatch.change();
        clock.advance(time);
    }
    [[nodiscard]] const InboxItem &item(int index) const { return store.inboxItems.value().at(index); }
    /// What was posted since the last call.
    [[nodiscard]] QList<Notification> takePosted() { return notificationCenter.take(); }
};

} // namespace wrenfold
