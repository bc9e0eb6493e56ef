// SPDX-License-Identifier: MIT
#include "ai/chat_transcript.h"

#include "ai/message_bubble.h"
#include "ai/proposal_card.h"
#include "look/overlay_scroll_bar.h"
#include "look/tab_order.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr double widestShare = 0.78; ///< Of a message, of the transcript's width.
constexpr int lineStep = 24;         ///< A notch of the wheel is three of these, as a rule.

} // namespace

ChatTranscript::ChatTranscript(QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_tops({0})
    , m_card(new ProposalCard(viewport()))
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::TabFocus);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setSingleStep(lineStep);
    new OverlayScrollBar(verticalScrollBar(), this);
    setAccessibleName(QStringLiteral("会話"));
    m_card->hide();
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, const QWidget *focused) {
        if (focused && m_card->isAncestorOf(focused))
            revealInProposal(*focused);
    });
    connect(m_card, &ProposalCard::confirmed, this, [this] { Q_EMIT proposalConfirmed(*m_proposal); });
    connect(m_card, &ProposalCard::cancelled, this, [this] { Q_EMIT proposalCancelled(*m_proposal); });
}

ChatTranscript::~ChatTranscript()
{
    // The bubbles outlive this class's own part of the object, and the focus still moves among them.
    disconnect(qApp, nullptr, this, nullptr);
}

void ChatTranscript::setMessages(const QList<AIChatMessage> &messages)
{
    if (messages.size() == m_messages.size())
        return;
    m_messages = messages;
    layOut();
}

void ChatTranscript::setProposal(const std::optional<AIActionProposal> &proposal)
{
    if (proposal == m_proposal)
        return;
    m_proposal = proposal;
    if (m_proposal)
        m_card->setProposal(*m_proposal);
    m_card->setVisible(m_proposal.has_value());
    layOut();
}

void ChatTranscript::scrollToEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

bool ChatTranscript::isAtEnd() const
{
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

int ChatTranscript::proposalTop() const
{
    return m_tops.last();
}

void ChatTranscript::layOut()
{
    const bool wasAtEnd = isAtEnd();
    for (qsizetype i = m_sizes.size(); i < m_messages.size(); ++i) {
        measure(i);
        // The newest will be in sight, as a rule, and is laid out only once.
        if (i + 1 < m_messages.size() && !isHeld(i))
            retire(i);
    }
    int height = m_tops.last();
    if (m_proposal) {
        m_card->resize(viewport()->width(), m_card->heightForWidth(viewport()->width()));
        height += m_card->height() + Metrics::bubbleSpacing;
    }
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
    if (wasAtEnd)
        scrollToEnd();
    placeBubbles();
}

void ChatTranscript::measure(qsizetype index)
{
    const int widest = static_cast<int>(viewport()->width() * widestShare);
    m_sizes.append(bubble(index)->fittedTo(widest));
    m_tops.append(m_tops.last() + m_sizes.last().height() + Metrics::bubbleSpacing);
}

void ChatTranscript::placeBubbles()
{
    const int scroll = verticalScrollBar()->value();
    m_card->move(0, proposalTop() - scroll);
    if (m_sizes.isEmpty())
        return;
    const qsizetype first = messageAt(scroll);
    const qsizetype last = messageAt(scroll + viewport()->height() - 1);
    const QList<qsizetype> shown = m_shown.keys();
    for (const qsizetype index : shown) {
        if (index >= first && index <= last)
            continue;
        if (isHeld(index))
            placeBubble(index);
        else
            retire(index);
    }
    for (qsizetype i = first; i <= last; ++i)
        placeBubble(i);
}

void ChatTranscript::placeBubble(qsizetype index)
{
    MessageBubble *widget = bubble(index);
    const QSize &size = m_sizes[index];
    const bool isUser = m_messages[index].role == AIChatMessage::Role::user;
    const int left = isUser ? viewport()->width() - size.width() : 0;
    widget->setGeometry(QRect(QPoint(left, m_tops[index] - verticalScrollBar()->value()), size));
    widget->show();
}

MessageBubble *ChatTranscript::bubble(qsizetype index)
{
    MessageBubble *&widget = m_shown[index];
    if (!widget) {
        if (m_spare.isEmpty()) {
            widget = new MessageBubble(viewport());
            connect(widget, &MessageBubble::selectionChanged, this,
                    [this, made = widget] { clearOtherSelections(*made); });
        } else {
            widget = m_spare.takeLast();
        }
        widget->setMessage(m_messages[index]);
        if (index < m_sizes.size())
            widget->setLineWrapColumnOrWidth(m_sizes[index].width());
    }
    return widget;
}

bool ChatTranscript::isHeld(qsizetype index) const
{
    const MessageBubble *widget = m_shown.value(index);
    return widget->hasFocus() || widget->textCursor().hasSelection();
}

void ChatTranscript::retire(qsizetype index)
{
    MessageBubble *widget = m_shown.take(index);
    widget->hide();
    m_spare.append(widget);
}

qsizetype ChatTranscript::messageAt(int y) const
{
    const auto behind = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    return std::clamp<qsizetype>(behind - m_tops.begin() - 1, 0, m_sizes.size() - 1);
}

void ChatTranscript::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        m_sizes.clear();
        m_tops.resize(1);
        layOut();
    }
}

void ChatTranscript::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (event->oldSize().width() == event->size().width() || m_messages.isEmpty()) {
        layOut();
        return;
    }
    // The message that is being read stays where it is, though those above it get higher or lower.
    const bool wasAtEnd = isAtEnd();
    const qsizetype reading = messageAt(verticalScrollBar()->value());
    const int distance = verticalScrollBar()->value() - m_tops[reading];
    m_sizes.clear();
    m_tops.resize(1);
    layOut();
    if (!wasAtEnd)
        verticalScrollBar()->setValue(m_tops[reading] + std::min(distance, m_sizes[reading].height()));
}

void ChatTranscript::scrollContentsBy(int, int)
{
    placeBubbles();
}

void ChatTranscript::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    if (!m_messages.isEmpty())
        focusMessage(messageAt(verticalScrollBar()->value() + viewport()->height() - 1), event->reason());
}

bool ChatTranscript::focusNextPrevChild(bool next)
{
    if (focusedIndex() < 0)
        return QAbstractScrollArea::focusNextPrevChild(next);
    return focusNextInTabOrder(*this, next);
}

void ChatTranscript::keyPressEvent(QKeyEvent *event)
{
    if ((event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier || m_messages.isEmpty()) {
        event->ignore();
        return;
    }
    QScrollBar *bar = verticalScrollBar();
    // From the proposal, the way up leads to the last message.
    const qsizetype focused = focusedIndex();
    const qsizetype current = focused < 0 ? m_messages.size() : focused;
    const auto scroll = [&](QAbstractSlider::SliderAction action, int edge) {
        bar->triggerAction(action);
        bubble(messageAt(bar->value() + edge))->setFocus(Qt::TabFocusReason);
    };
    const int lastLine = viewport()->height() - 1;
    switch (event->key()) {
    case Qt::Key_Up:
        // A message that is longer than what is in sight is read on before the next one comes.
        if (focused >= 0 && m_tops[focused] < bar->value())
            bar->triggerAction(QScrollBar::SliderSingleStepSub);
        else
            focusMessage(std::max<qsizetype>(current - 1, 0), Qt::TabFocusReason);
        break;
    case Qt::Key_Down:
        if (focused >= 0 && m_tops[focused] + m_sizes[focused].height() > bar->value() + viewport()->height())
            bar->triggerAction(QScrollBar::SliderSingleStepAdd);
        else
            focusMessage(std::min(current + 1, m_messages.size() - 1), Qt::TabFocusReason);
        break;
    case Qt::Key_PageUp:
        scroll(QScrollBar::SliderPageStepSub, 0);
        break;
    case Qt::Key_PageDown:
        scroll(QScrollBar::SliderPageStepAdd, lastLine);
        break;
    case Qt::Key_Home:
        scroll(QScrollBar::SliderToMinimum, 0);
        break;
    case Qt::Key_End:
        scroll(QScrollBar::SliderToMaximum, lastLine);
        break;
    default:
        event->ignore();
    }
}

qsizetype ChatTranscript::focusedIndex() const
{
    for (auto it = m_shown.begin(); it != m_shown.end(); ++it) {
        if (it.value()->hasFocus())
            return it.key();
    }
    return -1;
}

void ChatTranscript::focusMessage(qsizetype index, Qt::FocusReason reason)
{
    placeBubble(index);
    bubble(index)->setFocus(reason);
    scrollTo(m_tops[index], m_tops[index] + m_sizes[index].height());
}

/// Nobody confirms what he does not see: the whole card, and if that does not fit, at least the button.
void ChatTranscript::revealInProposal(const QWidget &focused)
{
    scrollTo(proposalTop(), proposalTop() + m_card->height());
    const int top = proposalTop() + focused.mapTo(m_card, QPoint()).y();
    scrollTo(top, top + focused.height());
}

/// One selection in all of the conversation, as in one text.
void ChatTranscript::clearOtherSelections(const MessageBubble &selected)
{
    if (!selected.textCursor().hasSelection())
        return;
    for (MessageBubble *bubble : std::as_const(m_shown)) {
        QTextCursor cursor = bubble->textCursor();
        if (bubble == &selected || !cursor.hasSelection())
            continue;
        cursor.clearSelection();
        bubble->setTextCursor(cursor);
    }
}

void ChatTranscript::scrollTo(int top, int bottom)
{
    QScrollBar *bar = verticalScrollBar();
    if (bottom > bar->value() + viewport()->height())
        bar->setValue(std::min(top, bottom - viewport()->height()));
    if (top < bar->value())
        bar->setValue(std::max(top, bottom - viewport()->height()));
}

} // namespace wrenfold
