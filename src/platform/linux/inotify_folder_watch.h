// SPDX-License-Identifier: MIT
#pragma once

#include "platform/folder_watch.h"

#include <QSocketNotifier>

#include <memory>

namespace wrenfold {

/// Watches a folder by inotify.
class InotifyFolderWatch final : public FolderWatch
{
public:
    InotifyFolderWatch() = default;
    ~InotifyFolderWatch() override;

    [[nodiscard]] bool start(const QString &folder, const Actions &actions) override;
    void stop() override;

private:
    void readEvents();

    Actions m_actions;
    int m_queue = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace wrenfold
