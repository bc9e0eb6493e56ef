// SPDX-License-Identifier: MIT
#include "views/dragging_task_preview.h"

#include "look/painting.h"
#include "look/text_label.h"

#include <QPainter>

namespace wrenfold {

namespace {

constexpr int checkLeft = Metrics::rowLeftPadding + Metrics::rowLeadWidth + Metrics::rowSpacing;
constexpr int titleLeft = checkLeft + Metrics::checkSize + Metrics::rowSpacing;
constexpr int trailingWidth = Metrics::rowRightPadding + Metrics::iconButtonSize;

} // namespace

DraggingTaskPreview::DraggingTaskPreview(const TaskItem &task, QWidget *parent)
    : QWidget(parent)
    , m_title(new TextLabel(task.title, this))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_title->setFont(Fonts::body());
}

void DraggingTaskPreview::resizeEvent(QResizeEvent *)
{
    m_title->setGeometry(titleLeft, 0, width() - trailingWidth - Metrics::rowSpacing - titleLeft, height());
}

void DraggingTaskPreview::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const Theme &theme = Theme::current();
    Painting::roundedCard(painter, rect(), Metrics::rowRadius, {theme.card, theme.accent, {}});
    Painting::symbol(painter, QRectF(Metrics::rowLeftPadding, 0, Metrics::rowLeadWidth, height()),
                     QStringLiteral("line.3.horizontal"), theme.tertiaryInk);
    Painting::symbol(painter, QRectF(checkLeft, 0, Metrics::checkSize, height()), QStringLiteral("circle"),
                     theme.secondaryInk);
    Painting::symbol(painter, QRectF(width() - trailingWidth, 0, Metrics::iconButtonSize, height()),
                     QStringLiteral("arrow.up.and.down.and.arrow.left.and.right"), theme.accent);
}

} // namespace wrenfold
