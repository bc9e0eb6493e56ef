// SPDX-License-Identifier: MIT
#include "views/board_chip.h"

#include "look/check_circle.h"
#include "look/icon_button.h"
#include "look/painting.h"
#include "look/text_label.h"

#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

/// What lies under the actions, so that the title does not show through.
class Veil : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Theme::current().card);
        painter.fillRect(rect(), Theme::current().hover);
    }
};

} // namespace

BoardChip::BoardChip(const Actions &actions, QWidget *parent)
    : DeferredTaskRow(actions, parent)
    , m_veil(new Veil(this))
{
    m_veil->hide();
    check()->setCircleSize(Metrics::chipCheckSize);
    title()->setFont(Fonts::subtask());
    title()->setMaximumLines(2);
}

QRect BoardChip::chipRect() const
{
    return rect().adjusted(0, 0, 0, -Metrics::cellSpacing);
}

void BoardChip::placeChildren()
{
    const QRect chip = chipRect();
    constexpr int hitMargin = (Metrics::checkHitSize - Metrics::chipCheckSize) / 2;
    check()->setGeometry(Metrics::chipPadding - hitMargin, (chip.height() - Metrics::checkHitSize) / 2,
                         Metrics::checkHitSize, Metrics::checkHitSize);
    const int left = Metrics::chipPadding + Metrics::chipCheckSize + Metrics::rowSpacing;
    const int textWidth = chip.width() - Metrics::chipPadding - left;
    const int titleHeight = title()->heightForWidth(textWidth);
    const int subtasksHeight = subtasks()->isHidden() ? 0 : subtasks()->sizeHint().height();
    const int top = std::max(0, (chip.height() - titleHeight - subtasksHeight) / 2);
    title()->setGeometry(left, top, textWidth, titleHeight);
    subtasks()->setGeometry(left, top + titleHeight, textWidth, subtasksHeight);
    int right = chip.width() - Metrics::rowRightPadding;
    m_veil->setVisible(isEngaged());
    m_veil->setGeometry(right - int(actionButtons().size()) * Metrics::iconButtonSize,
                        Metrics::rowRightPadding, int(actionButtons().size()) * Metrics::iconButtonSize,
                        chip.height() - 2 * Metrics::rowRightPadding);
    m_veil->raise();
    for (IconButton *button : actionButtons()) {
        if (!button)
            continue;
        right -= Metrics::iconButtonSize;
        button->setGeometry(right, (chip.height() - Metrics::iconButtonSize) / 2, Metrics::iconButtonSize,
                            Metrics::iconButtonSize);
        button->raise();
    }
}

void BoardChip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Painting::roundedCard(painter, chipRect(), Metrics::chipRadius, {Theme::current().hover, {}, {}});
    if (showsFocusRing())
        Painting::focusRing(painter, chipRect(), Metrics::chipRadius);
}

} // namespace wrenfold
