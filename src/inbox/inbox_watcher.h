// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>

#include <functional>
#include <memory>

namespace wrenfold {

class Clock;
class FolderWatch;
class ScheduledCall;

/// Tells when candidates come to the inbox folder, change or go: once for a burst of such events.
class InboxWatcher
{
public:
    /// Both must outlive the watcher.
    InboxWatcher(FolderWatch &folderWatch, Clock &clock);
    ~InboxWatcher();

    /// Wrenfold/inbox in the user's data folder.
    [[nodiscard]] static QUrl inboxDirectory();

    /// Called on the main thread, 200 ms after the last event of a burst.
    std::function<void()> onChange;

    /// Makes the folder and watches it. If that cannot be, the log says so and nothing is watched. A folder that is
    /// taken away later is made and watched again, as soon as that can be.
    void start();

private:
    [[nodiscard]] bool watch();
    void watchAgain();
    void scheduleChange();

    FolderWatch &m_folderWatch;
    Clock &m_clock;
    std::unique_ptr<ScheduledCall> m_change; ///< Present while a burst may go on.
    std::unique_ptr<ScheduledCall> m_retry;  ///< Present while the folder is lost.
};

} // namespace wrenfold
