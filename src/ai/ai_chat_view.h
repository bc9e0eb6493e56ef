// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_chat_state.h"

#include <QFuture>
#include <QWidget>

namespace wrenfold {

class ChatComposer;
class ChatTranscript;
class FocusStore;
class TextButton;
class TextLabel;

/// The conversation with the AI about the list. What it suggests reaches the list only when the user confirms it.
class AIChatView : public QWidget
{
    Q_OBJECT

public:
    /// The store must outlive the view.
    explicit AIChatView(FocusStore &store, QWidget *parent = nullptr);

    [[nodiscard]] const AIChatState &state() const { return m_state; }

    /// The user can type at once.
    void focusComposer();

private:
    void send();
    void requestSortProposal();
    void requestSubtaskProposal();
    void askGeneralQuestion(const QString &text);
    void askForNextStep();
    /// Shows what the request that has begun comes to; `take` puts an answer into the state.
    template<typename Result, typename Take>
    void await(AIChatRequest request, const QFuture<Result> &answer, Take take);
    void applyProposal(const AIActionProposal &proposal);
    void cancelProposal();

    TextButton *addQuickAction(const QString &label, const QString &symbol, void (AIChatView::*action)());
    [[nodiscard]] QWidget *makeActivityLine();
    /// Shows the state as it is now.
    void follow();

    void paintEvent(QPaintEvent *event) override;

    FocusStore &m_store;
    AIChatState m_state;
    QList<TextButton *> m_quickActions;
    ChatTranscript *m_transcript;
    TextLabel *m_activityText;
    QWidget *m_activityLine;
    ChatComposer *m_composer;
};

} // namespace wrenfold
