// SPDX-License-Identifier: MIT
#pragma once

#include "views/menu_probes.h"
#include "views/panel_rows.h"
#include "views/view_probes.h"

namespace wrenfold {

/// A row of a list, alone in a window, and what was asked of it, one line a call.
template<typename Row>
struct RowInWindow
{
    QWidget window;
    QStringList calls;
    Row *row = nullptr;

    /// Shows the row as it is shown in the list; false when the window does not become active.
    [[nodiscard]] bool show(const PanelRow &value)
    {
        row->setRow(value);
        row->setGeometry(0, 0, 332, value.height());
        window.resize(332, 120);
        window.setFocusPolicy(Qt::StrongFocus); // So that the row can be left.
        window.show();
        const bool isActive = QTest::qWaitForWindowActive(&window);
        window.setFocus();
        QTest::mouseMove(&window, window.rect().bottomRight());
        return isActive;
    }
};

} // namespace wrenfold
