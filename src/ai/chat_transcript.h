// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_chat_message.h"

#include <QAbstractScrollArea>
#include <QHash>

#include <optional>

namespace wrenfold {

class MessageBubble;
class ProposalCard;

/// The conversation from the top down, the user's messages on the right and the assistant's on the left; below them the
/// pending proposal. It follows the newest unless the user has scrolled up. It has widgets for the messages in sight only,
/// and for one in which something is selected or that has the focus.
///
/// One stop of the Tab key; inside, the arrow keys, Home, End, Page Up and Page Down go from message to message.
class ChatTranscript : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit ChatTranscript(QWidget *parent = nullptr);
    ~ChatTranscript() override;

    /// Those that were there before are the first of these.
    void setMessages(const QList<AIChatMessage> &messages);
    void setProposal(const std::optional<AIActionProposal> &proposal);

    void scrollToEnd();

Q_SIGNALS:
    void proposalConfirmed(const AIActionProposal &proposal);
    void proposalCancelled(const AIActionProposal &proposal);

protected:
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    /// Measures what has no size yet, and places everything.
    void layOut();
    void measure(qsizetype index);
    void placeBubbles();
    void placeBubble(qsizetype index);
    MessageBubble *bubble(qsizetype index);
    [[nodiscard]] bool isHeld(qsizetype index) const; ///< Keeps its widget out of sight too.
    void retire(qsizetype index);

    [[nodiscard]] bool isAtEnd() const;
    [[nodiscard]] int proposalTop() const;
    [[nodiscard]] qsizetype messageAt(int y) const; ///< `y` counts from the top of the transcript.
    [[nodiscard]] qsizetype focusedIndex() const;
    void focusMessage(qsizetype index, Qt::FocusReason reason);
    void scrollTo(int top, int bottom); ///< Both count from the top of the transcript.
    void revealInProposal(const QWidget &focused);
    void clearOtherSelections(const MessageBubble &selected);

    QList<AIChatMessage> m_messages;
    QList<QSize> m_sizes; ///< Of the first messages; those that follow have yet to be measured.
    QList<int> m_tops;    ///< Of each measured message, and where the next one comes.
    QHash<qsizetype, MessageBubble *> m_shown;
    QList<MessageBubble *> m_spare;
    std::optional<AIActionProposal> m_proposal;
    ProposalCard *m_card;
};

} // namespace wrenfold
