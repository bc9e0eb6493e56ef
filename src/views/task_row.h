// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

#include <functional>

class QMenu;

namespace wrenfold {

class CheckCircle;
class EditableLabel;
class IconButton;
class TextLabel;

/// An open task or a subtask: done circle, title, and the actions that show while the row is pointed at or
/// focused.
///
/// Keys: Space done, Return or F2 rename, P NOW, Alt with Up and Down move it, Insert subtask, Delete delete, Left and
/// Right fold and unfold, Menu all of them. A click on the title makes it NOW, or renames what is NOW already.
///
/// A top-level task has a handle to drag it by; a click on that opens the menu.
class TaskRow : public PanelRowWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void(const TaskItem &)> toggleDone;
        std::function<void(const TaskItem &)> setActive;
        std::function<void(const TaskItem &)> toggleExpanded;
        std::function<void(const TaskItem &, const QString &)> updateTitle;
        std::function<void(const TaskItem &)> addSubtask;
        std::function<void(const TaskItem &)> splitTask;
        std::function<void(const TaskItem &, TaskQuadrant)> deferTask;
        std::function<void(const TaskItem &)> deleteTask;
        std::function<void(const TaskItem &, int)> moveBy; ///< So many places down among the open tasks.
    };

    TaskRow(const Actions &actions, QWidget *parent);

    void rename();
    /// At a point of the screen.
    void openMenu(const QPoint &position);

    /// Whether the task is dragged by this child of the row.
    [[nodiscard]] bool isHandle(const QWidget &child) const;

protected:
    void rowChanged(const PanelRow &previous) override;
    void engagementChanged() override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool actOnKey(int key) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void activateOrRename();
    void fillMenu(QMenu &menu);
    void makeActionButtons();
    void updateTitle();
    void updateChevron();
    void updateNumber();
    void updateHandle();
    void placeChildren();

    Actions m_actions;
    IconButton *m_chevron = nullptr;
    CheckCircle *m_check;
    TextLabel *m_number = nullptr;
    EditableLabel *m_title;
    IconButton *m_pin;
    // Made when the row is first pointed at or focused: most rows never are.
    IconButton *m_addSubtask = nullptr;
    IconButton *m_split = nullptr;
    IconButton *m_delete = nullptr;
    IconButton *m_handle = nullptr;
};

} // namespace wrenfold
