// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

#include <functional>

namespace wrenfold {

class IconButton;
class TextLabel;

/// The header of the candidates: how many there are, and taking or dismissing all of them.
///
/// Keys: Space, Return and Menu open the menu with both; neither is done by a key alone, as it is done to all.
class InboxHeaderRow : public PanelRowWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void()> approveAll;
        std::function<void()> dismissAll;
    };

    InboxHeaderRow(const Actions &actions, QWidget *parent);

protected:
    void rowChanged(const PanelRow &previous) override;
    bool actOnKey(int key) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Actions m_actions;
    TextLabel *m_text;
    IconButton *m_approveAll;
    IconButton *m_dismissAll;
};

} // namespace wrenfold
