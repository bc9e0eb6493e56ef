// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

#include <array>
#include <functional>

class QMenu;

namespace wrenfold {

class CheckCircle;
class IconButton;
class TextLabel;

/// A deferred task: its quadrant's mark, title, and how many subtasks wait with it.
///
/// Keys: Return restore, Space done, Delete delete, Menu all of them and the quadrants.
class DeferredTaskRow : public PanelRowWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void(const TaskItem &)> restore;
        std::function<void(const TaskItem &, TaskQuadrant)> setQuadrant;
        std::function<void(const TaskItem &)> toggleDone;
        std::function<void(const TaskItem &)> deleteTask;
    };

    DeferredTaskRow(const Actions &actions, QWidget *parent);

protected:
    void rowChanged(const PanelRow &previous) override;
    void engagementChanged() override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool actOnKey(int key) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    virtual void placeChildren();

    [[nodiscard]] CheckCircle *check() const { return m_check; }
    [[nodiscard]] TextLabel *title() const { return m_title; }
    [[nodiscard]] TextLabel *subtasks() const { return m_subtasks; }
    /// The actions from the right, null while they were never wanted.
    [[nodiscard]] std::array<IconButton *, 3> actionButtons() const
    {
        return {m_delete, m_quadrant, m_restore};
    }

private:
    void makeActionButtons();
    void showQuadrantMenu();

    Actions m_actions;
    CheckCircle *m_check;
    TextLabel *m_title;
    TextLabel *m_subtasks;
    // Made when the row is first pointed at or focused.
    IconButton *m_restore = nullptr;
    IconButton *m_quadrant = nullptr;
    IconButton *m_delete = nullptr;
};

} // namespace wrenfold
