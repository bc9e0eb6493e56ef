// SPDX-License-Identifier: MIT
#include "views/empty_state_row.h"

#include "look/painting.h"
#include "look/text_label.h"

#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr int titleTop = 42;
constexpr int lineHeight = 20;

} // namespace

EmptyStateRow::EmptyStateRow(QWidget *parent)
    : PanelRowWidget(parent)
    , m_title(new TextLabel({}, this))
    , m_hint(new TextLabel({}, this))
{
    m_title->setFont(Fonts::body());
    m_title->setColor(&Theme::secondaryInk);
    m_hint->setFont(Fonts::small());
    m_hint->setColor(&Theme::tertiaryInk);
}

void EmptyStateRow::rowChanged(const PanelRow &)
{
    setAccessibleName(row().title);
    setAccessibleDescription(row().hint);
    m_title->setText(row().title);
    m_hint->setText(row().hint);
}

void EmptyStateRow::resizeEvent(QResizeEvent *event)
{
    PanelRowWidget::resizeEvent(event);
    const auto centred = [this](TextLabel *label, int top) {
        const int labelWidth = std::min(label->sizeHint().width(), width());
        label->setGeometry((width() - labelWidth) / 2, top, labelWidth, lineHeight);
    };
    centred(m_title, titleTop);
    centred(m_hint, titleTop + lineHeight);
}

void EmptyStateRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    constexpr int symbolSize = 24;
    Painting::symbol(painter, QRectF(0, 0, width(), titleTop), QStringLiteral("tray"),
                     Theme::current().tertiaryInk, symbolSize);
}

} // namespace wrenfold
