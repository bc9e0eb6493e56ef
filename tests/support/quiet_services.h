// SPDX-License-Identifier: MIT
#pragma once

#include "ai/openrouter_task_sorter.h"
#include "model/focus_store.h"
#include "notify/app_notifier.h"
#include "platform/none/no_notification_center.h"
#include "platform/none/no_sounds.h"
#include "support/fake_folder_watch.h"
#include "support/fake_login_item.h"

namespace wrenfold {

/// For a store whose timer and AI matter to nobody: notifications and sounds that reach nobody, and no service.
class QuietServices
{
public:
    /// What the store works with, beside these. This object must outlive the store.
    [[nodiscard]] FocusStore::Services with(Preferences &preferences, Clock &clock)
    {
        return {preferences, clock, m_notifier, m_sounds, m_sorter, m_folderWatch, m_loginItem};
    }

    [[nodiscard]] FakeFolderWatch &folderWatch() { return m_folderWatch; }
    [[nodiscard]] FakeLoginItem &loginItem() { return m_loginItem; }

private:
    NoNotificationCenter m_center;
    AppNotifier m_notifier{m_center};
    NoSounds m_sounds;
    FakeFolderWatch m_folderWatch;
    FakeLoginItem m_loginItem;
    OpenRouterTaskSorter m_sorter{ServiceOrigin{{}, QStringLiteral("no service here")}};
};

} // namespace wrenfold
