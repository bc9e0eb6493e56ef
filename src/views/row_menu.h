// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_quadrant.h"

#include <functional>
#include <optional>

class QMenu;
class QContextMenuEvent;
class QWidget;

namespace wrenfold {

/// What deleting a task is called, wherever it is offered.
[[nodiscard]] QString deleteHelp();

/// Adds an entry for each quadrant; `chosen` is called for one that is not `current`, which has a tick.
void addQuadrantEntries(QMenu &menu, std::optional<TaskQuadrant> current,
                        std::function<void(TaskQuadrant)> chosen);

/// Shows a row's menu where it was asked for: at the pointer, or at the row when asked for by key. Returns at
/// once; the menu deletes itself when it closes.
void showRowMenu(QMenu *menu, const QWidget &row, const QContextMenuEvent &event);

} // namespace wrenfold
