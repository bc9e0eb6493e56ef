// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QScrollBar;

namespace wrenfold {

/// A thin thumb over the right edge of a scroll area, so that scrolling takes no room from the rows. It shows
/// and moves a scroll bar that stays hidden itself, and is seen only when there is something to scroll.
class OverlayScrollBar : public QWidget
{
    Q_OBJECT

public:
    OverlayScrollBar(QScrollBar *bar, QWidget *area);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void follow();
    [[nodiscard]] QRect thumb() const;
    /// The scroll value at which the thumb's top is at `y`.
    [[nodiscard]] int valueAt(int y) const;

    QScrollBar *m_bar;
    int m_grabOffset = 0; ///< From the thumb's top to where it was grabbed.
};

} // namespace wrenfold
