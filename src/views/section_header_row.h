// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

#include <functional>

namespace wrenfold {

class IconButton;
class TextButton;
class TextLabel;

/// The header of a section of the list: its name and how many it holds. Those of the deferred and the
/// completed tasks fold and unfold their section by a click, Space or Return; the one of the completed can
/// clear them, the one of the deferred shows and hides the quadrant board.
class SectionHeaderRow : public PanelRowWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void(PanelRow::Kind)> toggleSection;
        std::function<void()> clearCompleted;
        std::function<void()> toggleBoard;
    };

    SectionHeaderRow(const Actions &actions, QWidget *parent);

protected:
    void rowChanged(const PanelRow &previous) override;
    bool actOnKey(int key) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void updateBoardButton();
    void placeChildren();

    Actions m_actions;
    TextLabel *m_text;
    IconButton *m_clear = nullptr;
    TextButton *m_board = nullptr;
};

} // namespace wrenfold
