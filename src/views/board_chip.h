// SPDX-License-Identifier: MIT
#pragma once

#include "views/deferred_task_row.h"

namespace wrenfold {

/// A deferred task in a cell of the quadrant board. It does what its row in the list does; there is room for less, so
/// that its actions lie over the end of the title while it is pointed at or focused.
class BoardChip : public DeferredTaskRow
{
    Q_OBJECT

public:
    BoardChip(const Actions &actions, QWidget *parent);

protected:
    void placeChildren() override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QRect chipRect() const;

    QWidget *m_veil; ///< Under the actions.
};

} // namespace wrenfold
