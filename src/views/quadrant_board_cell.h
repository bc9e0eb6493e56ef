// SPDX-License-Identifier: MIT
#pragma once

#include "views/deferred_task_row.h"

namespace wrenfold {

class RowListView;
class TextLabel;

/// One quadrant of the board: its name, how many tasks are deferred into it, and the tasks. While a task is dragged, the
/// place where it may be dropped.
class QuadrantBoardCell : public QWidget
{
    Q_OBJECT

public:
    QuadrantBoardCell(TaskQuadrant quadrant, const DeferredTaskRow::Actions &actions, QWidget *parent);

    [[nodiscard]] TaskQuadrant quadrant() const { return m_quadrant; }

    void setRows(const QList<PanelRow> &rows);
    /// Whether a task is being dragged, and whether it is over this cell.
    void setDrag(bool isDragging, bool isTargeted);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void placeChildren();

    const TaskQuadrant m_quadrant;
    TextLabel *m_title;
    TextLabel *m_count;
    TextLabel *m_label;
    TextLabel *m_drop;
    RowListView *m_list;
    bool m_isTargeted = false;
};

} // namespace wrenfold
