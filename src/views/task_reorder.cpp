// SPDX-License-Identifier: MIT
#include "views/task_reorder.h"

#include <algorithm>

namespace wrenfold {

QList<ReorderRow> reorderRows(const QList<PanelRow> &rows)
{
    QList<ReorderRow> result;
    int top = 0;
    for (const PanelRow &row : rows) {
        if (row.kind == PanelRow::Kind::DeferredHeader || row.kind == PanelRow::Kind::CompletedHeader)
            break;
        const int bottom = top + row.height();
        const bool isBelowTask = row.isSubtask || row.kind == PanelRow::Kind::SubtaskComposer;
        const bool isTask = row.kind == PanelRow::Kind::Task && row.task.isTopLevel();
        if (isBelowTask || isTask)
            result.append({row.isSubtask ? *row.task.parentID : row.task.id, isBelowTask, top, bottom});
        top = bottom;
    }
    return result;
}

std::optional<ReorderMove> reorderMove(const QList<ReorderRow> &rows, const QUuid &movingID, int y)
{
    if (rows.isEmpty())
        return std::nullopt;
    const int inside = std::clamp(y, rows.first().top, rows.last().bottom - 1);
    const auto under = std::find_if(rows.begin(), rows.end(), [inside](const ReorderRow &row) {
        return row.top <= inside && inside < row.bottom;
    });
    if (under == rows.end() || under->taskID == movingID)
        return std::nullopt;
    const bool placeAfter = under->isBelowTask || y >= (under->top + under->bottom) / 2;

    const auto isTargets = [under](const ReorderRow &row) { return row.taskID == under->taskID; };
    const auto first = std::find_if(rows.begin(), rows.end(), isTargets);
    const auto behind = std::find_if_not(first, rows.end(), isTargets);
    const bool isThereAlready = placeAfter ? behind != rows.end() && behind->taskID == movingID
                                           : first != rows.begin() && std::prev(first)->taskID == movingID;
    if (isThereAlready)
        return std::nullopt;
    return ReorderMove{under->taskID, placeAfter};
}

int autoScrollStep(int y, int height)
{
    constexpr int zone = 28;
    constexpr int slowness = 3; // Pixels into the zone for one pixel a tick.
    const int into = y < zone ? y - zone : std::max(0, y - (height - zone));
    return std::clamp(into / slowness, -zone / slowness, zone / slowness);
}

} // namespace wrenfold
