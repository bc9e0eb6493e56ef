// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_rows.h"

namespace wrenfold {

/// A row of the open tasks as a drag sees it: whose block it belongs to, and where it lies in the list.
struct ReorderRow
{
    QUuid taskID;             ///< The top-level task, also of a row of one of its subtasks.
    bool isBelowTask = false; ///< Not the task's own row.
    int top = 0;              ///< In device-independent pixels from the list's beginning.
    int bottom = 0;           ///< The first pixel that is no longer the row's.
};

/// The rows among which tasks are dragged, in the list's order.
[[nodiscard]] QList<ReorderRow> reorderRows(const QList<PanelRow> &rows);

/// Where a dragged block goes.
struct ReorderMove
{
    QUuid targetID;
    bool placeAfter = false;

    friend bool operator==(const ReorderMove &, const ReorderMove &) = default;
};

/// The move that brings the block of `movingID` to the height `y` of the list: before the row there when it is above the
/// row's middle, else behind it; above all rows to their beginning, below all to their end. None when the block is there
/// already.
[[nodiscard]] std::optional<ReorderMove> reorderMove(const QList<ReorderRow> &rows, const QUuid &movingID,
                                                     int y);

/// How far a list of this height scrolls at each tick while the pointer is at `y` of what is in sight of it: up when
/// negative, the farther the nearer it is to an edge or beyond; 0 away from the edges.
[[nodiscard]] int autoScrollStep(int y, int height);

} // namespace wrenfold
