// SPDX-License-Identifier: MIT
#pragma once

#include "views/deferred_task_row.h"

#include <optional>

namespace wrenfold {

class IconButton;
class QuadrantBoardCell;
class TextLabel;

/// The deferred tasks on two axes, urgency across and importance down.
class QuadrantBoard : public QWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        DeferredTaskRow::Actions task;
        std::function<void()> close;
    };

    explicit QuadrantBoard(const Actions &actions, QWidget *parent = nullptr);

    void setRows(const QuadrantBoardRows &rows);

    /// Whether a task is being dragged, and the quadrant that it is over.
    void setDrag(bool isDragging, std::optional<TaskQuadrant> targeted);
    /// The quadrant whose cell is at this point of the board.
    [[nodiscard]] std::optional<TaskQuadrant> quadrantAt(const QPoint &position) const;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void placeCells();

    TextLabel *m_title;
    IconButton *m_close;
    std::array<QuadrantBoardCell *, allQuadrants.size()> m_cells;
};

} // namespace wrenfold
