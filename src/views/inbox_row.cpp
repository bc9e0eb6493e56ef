// SPDX-License-Identifier: MIT
#include "views/inbox_row.h"

#include "look/check_circle.h"
#include "look/icon_button.h"
#include "look/painting.h"
#include "look/plain_text.h"
#include "look/text_label.h"
#include "views/inbox_source.h"
#include "views/row_menu.h"

#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QMenu>
#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr int widestTag = 60; ///< A source may call itself anything; the text is what matters.

} // namespace

InboxRow::InboxRow(const Actions &actions, QWidget *parent)
    : PanelRowWidget(parent)
    , m_actions(actions)
    , m_check(addCheck(QStringLiteral("TODOに追加"), [this] { m_actions.approve(row().inboxItem); }))
    , m_text(new TextLabel({}, this))
    , m_link(addButton(QStringLiteral("arrow.up.right.square"), QStringLiteral("元のメッセージを開く"),
                       [this] { m_actions.openLink(*row().inboxItem.url); }))
    , m_approve(addButton(QStringLiteral("plus.circle"), QStringLiteral("TODOに追加"),
                          [this] { m_actions.approve(row().inboxItem); }))
    , m_pin(addButton(QStringLiteral("pin"), QStringLiteral("追加してNOWにピン留め"),
                      [this] { m_actions.approveAndPin(row().inboxItem); }))
    , m_dismiss(addButton(QStringLiteral("xmark"), QStringLiteral("候補から削除"),
                          [this] { m_actions.dismiss(row().inboxItem); }))
{
    m_text->setFont(Fonts::body());
}

void InboxRow::rowChanged(const PanelRow &)
{
    const InboxItem &item = row().inboxItem;
    setAccessibleName(item.text);
    setAccessibleDescription(item.source);
    m_text->setText(item.text);
    m_link->setVisible(item.url.has_value());
    engagementChanged();
}

void InboxRow::engagementChanged()
{
    m_dismiss->setVisible(isEngaged());
    placeChildren();
}

void InboxRow::resizeEvent(QResizeEvent *event)
{
    PanelRowWidget::resizeEvent(event);
    placeChildren();
}

QString InboxRow::tagText() const
{
    return elided(row().inboxItem.source, Fonts::tinyStrong(), widestTag - 2 * Metrics::tagPadding, 1)
        .lines.first();
}

QRect InboxRow::tagRect() const
{
    if (row().inboxItem.source.isEmpty())
        return {};
    const int width =
        QFontMetrics(Fonts::tinyStrong()).horizontalAdvance(tagText()) + 2 * Metrics::tagPadding;
    return {Metrics::rowLeftPadding, (height() - Metrics::tagHeight) / 2, std::min(width, widestTag),
            Metrics::tagHeight};
}

void InboxRow::placeChildren()
{
    const int tagEnd = row().inboxItem.source.isEmpty() ? Metrics::rowLeftPadding + Metrics::rowLeadWidth
                                                        : tagRect().right() + 1;
    const int left = placeCheck(m_check, tagEnd + Metrics::rowSpacing);
    const int right = placeTrailing({m_pin, m_approve, m_link, m_dismiss});
    m_text->setGeometry(left, 0, right - Metrics::rowSpacing - left, height());
}

bool InboxRow::actOnKey(int key)
{
    const InboxItem item = row().inboxItem;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_actions.approve(item);
        return true;
    case Qt::Key_P:
        m_actions.approveAndPin(item);
        return true;
    case Qt::Key_Delete:
        m_actions.dismiss(item);
        return true;
    default:
        return false;
    }
}

void InboxRow::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    const InboxItem item = row().inboxItem;
    menu->addAction(m_approve->help(), [this, item] { m_actions.approve(item); });
    menu->addAction(m_pin->help(), [this, item] { m_actions.approveAndPin(item); });
    if (item.url)
        menu->addAction(m_link->help(), [this, item] { m_actions.openLink(*item.url); });
    menu->addSeparator();
    menu->addAction(m_dismiss->help(), [this, item] { m_actions.dismiss(item); });
    showRowMenu(menu, *this, *event);
}

void InboxRow::paintEvent(QPaintEvent *event)
{
    PanelRowWidget::paintEvent(event);
    const QRect tag = tagRect();
    if (tag.isEmpty())
        return;
    QPainter painter(this);
    const QColor ink = Theme::current().*sourceTint(row().inboxItem.source);
    Painting::roundedCard(painter, tag, Metrics::tagRadius, {Theme::current().tagSurface(ink), {}, {}});
    Painting::text(painter, tag, tagText(), Fonts::tinyStrong(), ink, Qt::AlignHCenter);
}

} // namespace wrenfold
