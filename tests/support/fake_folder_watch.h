// SPDX-License-Identifier: MIT
#pragma once

#include "platform/folder_watch.h"

#include <utility>

namespace wrenfold {

/// A folder watch that tells what a test has it tell.
class FakeFolderWatch final : public FolderWatch
{
public:
    [[nodiscard]] bool start(const QString &folder, const Actions &actions) override
    {
        m_folder = m_canWatch ? folder : QString();
        m_actions = actions;
        return m_canWatch;
    }
    void stop() override { m_folder.clear(); }

    void setCanWatch(bool canWatch) { m_canWatch = canWatch; }
    /// Empty while nothing is watched.
    [[nodiscard]] QString folder() const { return m_folder; }
    void change() { m_actions.changed(); }
    void lose()
    {
        m_folder.clear();
        const Actions actions = m_actions; // It may start anew.
        actions.lost();
    }

private:
    bool m_canWatch = true;
    QString m_folder;
    Actions m_actions;
};

} // namespace wrenfold
