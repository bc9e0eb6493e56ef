// SPDX-License-Identifier: MIT
#include "views/panel_header.h"

#include "look/count_badge.h"
#include "look/icon_button.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include <initializer_list>

namespace wrenfold {

PanelHeader::PanelHeader(const Actions &actions, QWidget *parent)
    : QWidget(parent)
    , m_timer(new TimerHeader(actions.timer, this))
    , m_board(addButton(QStringLiteral("square.grid.2x2.fill"), {}, actions.toggleBoard))
    , m_completedToday(new CountBadge(QStringLiteral("今日完了したタスク数"), this))
    , m_list(addButton(QStringLiteral("rectangle.compress.vertical"), {}, actions.toggleList))
    , m_hardPin(addButton(QStringLiteral("square.3.stack.3d"), {}, actions.toggleHardPin))
    , m_undo(
          addButton(QStringLiteral("arrow.uturn.backward"), QStringLiteral("元に戻す（⌘Z）"), actions.undo))
    , m_redo(addButton(QStringLiteral("arrow.uturn.forward"), QStringLiteral("やり直す（⌘Y）"), actions.redo))
    , m_sort(addButton(QStringLiteral("wand.and.stars"), QStringLiteral("AIで優先順に並べ替え（GOALが基準）"),
                       actions.sort))
    , m_chat(addButton(QStringLiteral("brain.head.profile"), QStringLiteral("AIチャットを開く"),
                       actions.openAIChat))
    , m_settings(addButton(QStringLiteral("gearshape"), QStringLiteral("設定..."), actions.openSettings))
    , m_hide(addButton(QStringLiteral("xmark"), QStringLiteral("パネルを隠す"), actions.hide))
{
    setFixedHeight(Metrics::gripHeight + Metrics::headerHeight + Metrics::stripMargin + Metrics::stripHeight);
    setBoard(false, 0);
    setListHidden(false);
    setHardPinned(false);
}

IconButton *PanelHeader::addButton(const QString &symbol, const QString &help,
                                   const std::function<void()> &action)
{
    auto *button = new IconButton(symbol, help, this);
    connect(button, &IconButton::clicked, this, action);
    return button;
}

void PanelHeader::setBoard(bool isVisible, int deferredCount)
{
    m_board->setOn(isVisible);
    m_board->setHelp(isVisible ? QStringLiteral("あとでやるの4象限を閉じる")
                               : QStringLiteral("あとでやるの4象限を表示（%1）").arg(deferredCount));
}

void PanelHeader::setListHidden(bool isHidden)
{
    m_list->setOn(isHidden);
    m_list->setHelp(isHidden ? QStringLiteral("TODOリストを表示") : QStringLiteral("NOWだけ表示"));
}

void PanelHeader::setHardPinned(bool isPinned)
{
    m_hardPin->setOn(isPinned);
    m_hardPin->setSymbol(isPinned ? QStringLiteral("square.3.stack.3d.top.fill")
                                  : QStringLiteral("square.3.stack.3d"));
    m_hardPin->setHelp(isPinned ? QStringLiteral("最前面固定: オン") : QStringLiteral("最前面固定: オフ"));
}

void PanelHeader::setCompletedTodayCount(int count)
{
    m_completedToday->setCount(count);
    placeChildren();
}

void PanelHeader::setCanUndo(bool canUndo)
{
    m_undo->setEnabled(canUndo);
}

void PanelHeader::setCanRedo(bool canRedo)
{
    m_redo->setEnabled(canRedo);
}

void PanelHeader::setCanSort(bool canSort)
{
    m_sort->setEnabled(canSort);
}

void PanelHeader::mousePressEvent(QMouseEvent *event)
{
    m_pull.press(*event, *window()->windowHandle());
}

void PanelHeader::mouseMoveEvent(QMouseEvent *event)
{
    m_pull.move(*event, *window()->windowHandle());
}

void PanelHeader::mouseReleaseEvent(QMouseEvent *event)
{
    m_pull.release(*event);
}

void PanelHeader::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeChildren();
}

void PanelHeader::placeChildren()
{
    m_timer->setGeometry(0, Metrics::gripHeight, width(), Metrics::headerHeight);
    constexpr int top = Metrics::gripHeight + Metrics::headerHeight + Metrics::stripMargin;
    const auto place = [](QWidget *widget, int left) {
        const QSize size = widget->sizeHint();
        widget->setGeometry(left, top + (Metrics::stripHeight - size.height()) / 2, size.width(),
                            size.height());
        return left + size.width() + Metrics::stripSpacing;
    };
    int left = 0;
    for (QWidget *widget : std::initializer_list<QWidget *>{m_board, m_completedToday, m_list, m_hardPin,
                                                            m_undo, m_redo, m_sort, m_chat})
        left = place(widget, left);
    int right = width();
    for (IconButton *button : {m_hide, m_settings}) {
        right -= Metrics::iconButtonSize;
        place(button, right);
        right -= Metrics::stripSpacing;
    }
}

void PanelHeader::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::current().line);
    const QRectF bar((width() - Metrics::gripBarWidth) / 2.0,
                     (Metrics::gripHeight - Metrics::gripBarHeight) / 2.0, Metrics::gripBarWidth,
                     Metrics::gripBarHeight);
    painter.drawRoundedRect(bar, Metrics::gripBarHeight / 2.0, Metrics::gripBarHeight / 2.0);
}

} // namespace wrenfold
