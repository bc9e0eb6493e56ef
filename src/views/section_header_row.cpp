// SPDX-License-Identifier: MIT
#include "views/section_header_row.h"

#include "look/icon_button.h"
#include "look/painting.h"
#include "look/text_button.h"
#include "look/text_label.h"

#include <QMouseEvent>
#include <QPainter>

namespace wrenfold {

namespace {

QString headerText(const PanelRow &row)
{
    switch (row.kind) {
    case PanelRow::Kind::DeferredHeader:
        return QStringLiteral("あとでやる %1").arg(row.count);
    case PanelRow::Kind::CompletedHeader:
        return (row.isExpanded ? QStringLiteral("完了済みを閉じる %1") : QStringLiteral("完了済みを表示 %1"))
            .arg(row.count);
    default:
        return QStringLiteral("TODO %1").arg(row.count);
    }
}

} // namespace

SectionHeaderRow::SectionHeaderRow(const Actions &actions, QWidget *parent)
    : PanelRowWidget(parent)
    , m_actions(actions)
    , m_text(new TextLabel({}, this))
{
    m_text->setFont(Fonts::smallStrong());
    m_text->setColor(&Theme::secondaryInk);
    m_text->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SectionHeaderRow::rowChanged(const PanelRow &)
{
    const QString text = headerText(row());
    setAccessibleName(text);
    m_text->setText(text);
    if (row().kind == PanelRow::Kind::CompletedHeader && !m_clear) {
        m_clear = addButton(QStringLiteral("trash"),
                            QStringLiteral("完了済みのタスクをまとめて削除（元に戻せます）"),
                            m_actions.clearCompleted);
    }
    if (row().kind == PanelRow::Kind::DeferredHeader)
        updateBoardButton();
}

void SectionHeaderRow::updateBoardButton()
{
    if (!m_board) {
        m_board = new TextButton({}, TextButton::Kind::Link, this);
        m_board->setFocusPolicy(Qt::NoFocus);
        connect(m_board, &TextButton::clicked, this, [this] { m_actions.toggleBoard(); });
        m_board->show();
    }
    m_board->setLabel(row().isBoardVisible ? QStringLiteral("4象限を閉じる") : QStringLiteral("4象限で見る"));
    m_board->setHelp(QStringLiteral("%1件を4象限で表示").arg(row().count));
    placeChildren();
}

void SectionHeaderRow::resizeEvent(QResizeEvent *event)
{
    PanelRowWidget::resizeEvent(event);
    placeChildren();
}

void SectionHeaderRow::placeChildren()
{
    const int left = row().takesFocus() ? Metrics::symbolSize + Metrics::sectionHeaderSpacing : 0;
    int right = width();
    if (m_clear) {
        right -= Metrics::iconButtonSize + Metrics::rowRightPadding;
        m_clear->setGeometry(right, 0, Metrics::iconButtonSize, height());
    }
    if (m_board) {
        const int buttonWidth = m_board->sizeHint().width();
        right -= buttonWidth + Metrics::rowRightPadding;
        m_board->setGeometry(right, 0, buttonWidth, height());
    }
    m_text->setGeometry(left, 0, right - left, height());
}

bool SectionHeaderRow::actOnKey(int key)
{
    switch (key) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_actions.toggleSection(row().kind);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (row().isExpanded == (key == Qt::Key_Left))
            m_actions.toggleSection(row().kind);
        return true;
    case Qt::Key_Delete:
        if (row().kind == PanelRow::Kind::CompletedHeader)
            m_actions.clearCompleted();
        return true;
    default:
        return false;
    }
}

void SectionHeaderRow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && row().takesFocus() &&
        rect().contains(event->position().toPoint()))
        m_actions.toggleSection(row().kind);
}

void SectionHeaderRow::paintEvent(QPaintEvent *event)
{
    PanelRowWidget::paintEvent(event);
    if (!row().takesFocus())
        return;
    QPainter painter(this);
    const QRectF lead(0, 0, Metrics::symbolSize, height());
    Painting::symbol(painter, lead,
                     row().isExpanded ? QStringLiteral("chevron.down") : QStringLiteral("chevron.right"),
                     Theme::current().secondaryInk);
}

} // namespace wrenfold
