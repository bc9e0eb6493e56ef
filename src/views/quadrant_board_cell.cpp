// SPDX-License-Identifier: MIT
#include "views/quadrant_board_cell.h"

#include "look/painting.h"
#include "look/text_label.h"
#include "views/board_chip.h"
#include "views/row_list_view.h"

#include <QPainter>

namespace wrenfold {

namespace {

/// What to do with the tasks of a quadrant, in a word.
QString titleOf(TaskQuadrant quadrant)
{
    switch (quadrant) {
    case TaskQuadrant::urgentImportant:
        return QStringLiteral("すぐやる");
    case TaskQuadrant::importantNotUrgent:
        return QStringLiteral("予定に入れる");
    case TaskQuadrant::urgentNotImportant:
        return QStringLiteral("短く済ませる");
    case TaskQuadrant::notUrgentNotImportant:
        break;
    }
    return QStringLiteral("手放す");
}

Theme::Color colorOf(TaskQuadrant quadrant)
{
    return Theme::quadrants()[std::size_t(quadrant)];
}

} // namespace

QuadrantBoardCell::QuadrantBoardCell(TaskQuadrant quadrant, const DeferredTaskRow::Actions &actions,
                                     QWidget *parent)
    : QWidget(parent)
    , m_quadrant(quadrant)
    , m_title(new TextLabel(titleOf(quadrant), this))
    , m_count(new TextLabel({}, this))
    , m_label(new TextLabel(label(quadrant), this))
    , m_drop(new TextLabel(QStringLiteral("ここへドロップ"), this))
    , m_list(new RowListView(
          [actions](PanelRow::Kind, QWidget *owner) { return new BoardChip(actions, owner); }, this))
{
    m_title->setFont(Fonts::control());
    m_title->setColor(colorOf(quadrant));
    m_count->setFont(Fonts::tiny());
    m_count->setColor(&Theme::tertiaryInk);
    m_label->setFont(Fonts::tiny());
    m_label->setColor(&Theme::tertiaryInk);
    m_drop->setFont(Fonts::control());
    m_drop->setColor(colorOf(quadrant));
    m_drop->hide();
    m_list->setAccessibleName(titleOf(quadrant));
    setRows({});
}

void QuadrantBoardCell::setRows(const QList<PanelRow> &rows)
{
    m_count->setText(QString::number(rows.size()));
    m_list->setRows(rows);
    placeChildren();
}

void QuadrantBoardCell::setDrag(bool isDragging, bool isTargeted)
{
    m_drop->setVisible(isDragging && isTargeted);
    m_isTargeted = isTargeted;
    update();
}

void QuadrantBoardCell::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeChildren();
}

void QuadrantBoardCell::placeChildren()
{
    const int inner = width() - 2 * Metrics::cellPadding;
    int top = Metrics::cellPadding;
    const int countWidth = m_count->sizeHint().width() + Metrics::cellSpacing;
    m_title->setGeometry(Metrics::cellPadding, top, inner - countWidth, Metrics::cellTitleHeight);
    m_count->setGeometry(Metrics::cellPadding + inner - m_count->sizeHint().width(), top,
                         m_count->sizeHint().width(), Metrics::cellTitleHeight);
    top += Metrics::cellTitleHeight;
    m_label->setGeometry(Metrics::cellPadding, top, inner, Metrics::cellLabelHeight);
    top += Metrics::cellLabelHeight + Metrics::cellSpacing;
    m_list->setGeometry(Metrics::cellPadding, top, inner, height() - Metrics::cellPadding - top);
    const QSize drop = m_drop->sizeHint();
    m_drop->setGeometry((width() - drop.width()) / 2, (top + height() - drop.height()) / 2, drop.width(),
                        drop.height());
    m_drop->raise();
}

void QuadrantBoardCell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const Theme &theme = Theme::current();
    const QColor color = theme.*colorOf(m_quadrant);
    if (!m_isTargeted) {
        Painting::roundedCard(painter, rect(), Metrics::cellRadius, {theme.card, theme.line, {}});
        return;
    }
    Painting::roundedCard(painter, rect(), Metrics::cellRadius, {theme.dropSurface(color), {}, {}});
    Painting::dashedOutline(painter, rect(), Metrics::cellRadius, color);
}

} // namespace wrenfold
