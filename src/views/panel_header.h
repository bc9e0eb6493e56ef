// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <functional>

namespace wrenfold {

class CountBadge;
class IconButton;

/// The top of the panel: the grip by which it is moved, and the strip of icons.
class PanelHeader : public QWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void()> undo;
        std::function<void()> redo;
        std::function<void()> hide;
    };

    explicit PanelHeader(const Actions &actions, QWidget *parent = nullptr);

    void setCompletedTodayCount(int count);
    void setCanUndo(bool canUndo);
    void setCanRedo(bool canRedo);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeChildren();

    CountBadge *m_completedToday;
    IconButton *m_undo;
    IconButton *m_redo;
    IconButton *m_hide;
    QPoint m_pressPosition;
};

} // namespace wrenfold
