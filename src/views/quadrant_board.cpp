// SPDX-License-Identifier: MIT
#include "views/quadrant_board.h"

#include "look/icon_button.h"
#include "look/text_label.h"
#include "views/quadrant_board_cell.h"

#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr int axisTop = Metrics::boardPadding + Metrics::boardTitleHeight;
constexpr int cellsTop = axisTop + Metrics::boardAxisHeight;
constexpr int cellsLeft = Metrics::boardPadding + Metrics::boardAxisWidth + Metrics::boardGap;

const QString urgentText = QStringLiteral("← 緊急度 高");
const QString notUrgentText = QStringLiteral("緊急度 低 →");
const QString importantText = QStringLiteral("↑\n重要度\n高");
const QString notImportantText = QStringLiteral("重要度\n低\n↓");

} // namespace

QuadrantBoard::QuadrantBoard(const Actions &actions, QWidget *parent)
    : QWidget(parent)
    , m_title(new TextLabel(QStringLiteral("あとでやるの4象限。上ほど重要、左ほど緊急"), this))
    , m_close(new IconButton(QStringLiteral("xmark"), QStringLiteral("4象限を閉じる"), this))
{
    m_title->setFont(Fonts::control());
    connect(m_close, &IconButton::clicked, this, actions.close);
    std::transform(allQuadrants.begin(), allQuadrants.end(), m_cells.begin(), [&](TaskQuadrant quadrant) {
        return new QuadrantBoardCell(quadrant, actions.task, this);
    });
}

void QuadrantBoard::setRows(const QuadrantBoardRows &rows)
{
    for (QuadrantBoardCell *cell : m_cells)
        cell->setRows(rows[std::size_t(cell->quadrant())]);
}

void QuadrantBoard::setDrag(bool isDragging, std::optional<TaskQuadrant> targeted)
{
    for (QuadrantBoardCell *cell : m_cells)
        cell->setDrag(isDragging, isDragging && targeted == cell->quadrant());
}

std::optional<TaskQuadrant> QuadrantBoard::quadrantAt(const QPoint &position) const
{
    for (const QuadrantBoardCell *cell : m_cells) {
        if (cell->geometry().contains(position))
            return cell->quadrant();
    }
    return std::nullopt;
}

void QuadrantBoard::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int right = width() - Metrics::boardPadding;
    m_close->setGeometry(right - Metrics::iconButtonSize, Metrics::boardPadding, Metrics::iconButtonSize,
                         Metrics::iconButtonSize);
    m_title->setGeometry(Metrics::boardPadding, Metrics::boardPadding,
                         right - Metrics::iconButtonSize - Metrics::boardGap - Metrics::boardPadding,
                         Metrics::boardTitleHeight);
    placeCells();
}

void QuadrantBoard::placeCells()
{
    const int cellWidth = (width() - Metrics::boardPadding - cellsLeft - Metrics::boardGap) / 2;
    const int cellHeight = (height() - Metrics::boardPadding - cellsTop - Metrics::boardGap) / 2;
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        m_cells[i]->setGeometry(cellsLeft + int(i % 2) * (cellWidth + Metrics::boardGap),
                                cellsTop + int(i / 2) * (cellHeight + Metrics::boardGap), cellWidth,
                                cellHeight);
    }
}

void QuadrantBoard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const Theme &theme = Theme::current();
    painter.setFont(Fonts::tiny());
    painter.setPen(theme.tertiaryInk);
    const QRect across(cellsLeft, axisTop, width() - Metrics::boardPadding - cellsLeft,
                       Metrics::boardAxisHeight);
    painter.drawText(across, Qt::AlignLeft | Qt::AlignTop, urgentText);
    painter.drawText(across, Qt::AlignRight | Qt::AlignTop, notUrgentText);
    const QRect down(Metrics::boardPadding, cellsTop, Metrics::boardAxisWidth,
                     height() - Metrics::boardPadding - cellsTop);
    painter.drawText(down, Qt::AlignHCenter | Qt::AlignTop, importantText);
    painter.drawText(down, Qt::AlignHCenter | Qt::AlignBottom, notImportantText);
}

} // namespace wrenfold
