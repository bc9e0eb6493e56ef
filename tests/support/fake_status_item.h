// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status_item.h"

namespace wrenfold {

/// A status area in memory. Below the interface is what a test steers and looks at.
class FakeStatusItem final : public StatusItem
{
public:
    [[nodiscard]] Availability availability() const override { return {}; }
    [[nodiscard]] Availability labelAvailability() const override { return {}; }
    void show(const Actions &actions) override
    {
        m_actions = actions;
        m_actions.labelShown(m_isLabelShown);
    }
    void setContent(const StatusItemContent &content) override { m_content = content; }
    void updateMenu() override
    {
        ++m_menuUpdates;
        m_rowsAtLastUpdate = m_actions.menuRows();
    }

    [[nodiscard]] bool isShown() const { return static_cast<bool>(m_actions.activate); }
    [[nodiscard]] const StatusItemContent &content() const { return m_content; }
    [[nodiscard]] int menuUpdates() const { return m_menuUpdates; }
    [[nodiscard]] const QList<StatusMenuRow> &rowsAtLastUpdate() const { return m_rowsAtLastUpdate; }
    void setLabelShown(bool isShown)
    {
        m_isLabelShown = isShown;
        if (m_actions.labelShown)
            m_actions.labelShown(isShown);
    }

    void click() const { m_actions.activate(); }
    void askForMenu() const { m_actions.openMenu(); }
    [[nodiscard]] QList<StatusMenuRow> openMenu() const { return m_actions.menuRows(); }
    /// Presses the row with this title, as a host does.
    [[nodiscard]] bool choose(const QString &title) const
    {
        const QList<StatusMenuRow> rows = m_actions.menuRows();
        for (const StatusMenuRow &row : rows) {
            if (row.title == title && row.isEnabled && row.command != 0) {
                m_actions.chooseRow(row.command);
                return true;
            }
        }
        return false;
    }

    /// Presses a row of a menu from before.
    void chooseCommand(int command) const { m_actions.chooseRow(command); }

private:
    Actions m_actions;
    StatusItemContent m_content;
    QList<StatusMenuRow> m_rowsAtLastUpdate;
    int m_menuUpdates = 0;
    bool m_isLabelShown = false;
};

} // namespace wrenfold
