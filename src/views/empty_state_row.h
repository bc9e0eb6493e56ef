// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

namespace wrenfold {

class TextLabel;

/// What stands where open tasks would: that there are none, and what can be done about it.
class EmptyStateRow : public PanelRowWidget
{
    Q_OBJECT

public:
    explicit EmptyStateRow(QWidget *parent);

protected:
    void rowChanged(const PanelRow &previous) override;
    bool actOnKey(int) override { return false; }
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    TextLabel *m_title;
    TextLabel *m_hint;
};

} // namespace wrenfold
