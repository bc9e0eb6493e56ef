// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_item.h"

#include <QWidget>

#include <functional>

namespace wrenfold {

class EditableLabel;
class IconButton;
class TextButton;
class TextLabel;

/// The card of the NOW task: the goal, editable in place, the task's title and what can be done with it.
/// Without a NOW task it offers to add one.
class NowCard : public QWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void(const TaskItem &)> toggleDone;
        std::function<void(const TaskItem &)> addSubtask;
        std::function<void(const TaskItem &)> deleteTask;
        std::function<void(const QString &)> setGoal;
        std::function<void()> requestTodoInput;
    };

    explicit NowCard(const Actions &actions, QWidget *parent = nullptr);

    void setGoal(const QString &goal);
    void setTask(const std::optional<TaskItem> &task);

    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    void heightChanged(); ///< The card wants another height for its width.

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void showTask();
    void placeChildren();
    [[nodiscard]] int titleWidth(int cardWidth) const;
    [[nodiscard]] int titleHeight(int cardWidth) const;

    Actions m_actions;
    std::optional<TaskItem> m_task;
    TextLabel *m_goalWord;
    EditableLabel *m_goal;
    TextLabel *m_title;
    TextButton *m_addTask;
    IconButton *m_addSubtask;
    IconButton *m_delete;
    IconButton *m_done;
};

} // namespace wrenfold
