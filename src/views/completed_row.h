// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

#include <functional>

namespace wrenfold {

class CheckCircle;
class IconButton;
class TextLabel;

/// A completed task. Keys: Space or Return reopen, Delete delete.
class CompletedRow : public PanelRowWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void(const TaskItem &)> restore;
        std::function<void(const TaskItem &)> deleteTask;
    };

    CompletedRow(const Actions &actions, QWidget *parent);

protected:
    void rowChanged(const PanelRow &previous) override;
    void engagementChanged() override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool actOnKey(int key) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeChildren();

    Actions m_actions;
    CheckCircle *m_check;
    TextLabel *m_title;
    IconButton *m_delete = nullptr; ///< Made when the row is first pointed at or focused.
};

} // namespace wrenfold
