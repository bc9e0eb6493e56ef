// SPDX-License-Identifier: MIT
#include "views/inbox_header_row.h"

#include "look/icon_button.h"
#include "look/painting.h"
#include "look/text_label.h"
#include "views/row_menu.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>

namespace wrenfold {

InboxHeaderRow::InboxHeaderRow(const Actions &actions, QWidget *parent)
    : PanelRowWidget(parent)
    , m_actions(actions)
    , m_text(new TextLabel({}, this))
    , m_approveAll(addButton(QStringLiteral("plus.circle"), QStringLiteral("候補をすべてTODOに追加"),
                             actions.approveAll))
    , m_dismissAll(addButton(QStringLiteral("xmark"), QStringLiteral("候補をすべて削除"), actions.dismissAll))
{
    m_text->setFont(Fonts::smallStrong());
    m_text->setColor(&Theme::secondaryInk);
    m_text->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void InboxHeaderRow::rowChanged(const PanelRow &)
{
    const QString text = QStringLiteral("INBOX %1").arg(row().count);
    setAccessibleName(text);
    m_text->setText(text);
}

bool InboxHeaderRow::actOnKey(int key)
{
    if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    const QPoint middle = rect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, mapToGlobal(middle));
    contextMenuEvent(&event);
    return true;
}

void InboxHeaderRow::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->addAction(m_approveAll->help(), m_actions.approveAll);
    menu->addAction(m_dismissAll->help(), m_actions.dismissAll);
    showRowMenu(menu, *this, *event);
}

void InboxHeaderRow::resizeEvent(QResizeEvent *event)
{
    PanelRowWidget::resizeEvent(event);
    const int left = Metrics::symbolSize + Metrics::sectionHeaderSpacing;
    const int right = placeTrailing({m_dismissAll, m_approveAll});
    m_text->setGeometry(left, 0, right - left, height());
}

void InboxHeaderRow::paintEvent(QPaintEvent *event)
{
    PanelRowWidget::paintEvent(event);
    QPainter painter(this);
    Painting::symbol(painter, QRectF(0, 0, Metrics::symbolSize, height()),
                     QStringLiteral("tray.and.arrow.down.fill"), Theme::current().secondaryInk);
}

} // namespace wrenfold
