// SPDX-License-Identifier: MIT
#include "ai/ai_chat_view.h"

#include "ai/ai_answer.h"
#include "ai/chat_composer.h"
#include "ai/chat_transcript.h"
#include "look/busy_indicator.h"
#include "look/symbol_label.h"
#include "look/text_button.h"
#include "look/text_label.h"
#include "model/focus_store.h"

#include <QPainter>
#include <QVBoxLayout>

namespace wrenfold {

AIChatView::AIChatView(FocusStore &store, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
{
    auto *title = new TextLabel(QStringLiteral("AI Copilot"), this);
    title->setFont(Fonts::windowTitle());
    auto *header = new QHBoxLayout;
    header->setSpacing(Metrics::fieldSpacing);
    header->addWidget(new SymbolLabel(QStringLiteral("brain.head.profile"), this));
    header->addWidget(title, 1);

    auto *quickActions = new QHBoxLayout;
    quickActions->setSpacing(Metrics::fieldSpacing);
    for (TextButton *button :
         {addQuickAction(QStringLiteral("並べ替え"), QStringLiteral("arrow.up.arrow.down"),
                         &AIChatView::requestSortProposal),
          addQuickAction(QStringLiteral("NOW分割"), QStringLiteral("list.bullet.indent"),
                         &AIChatView::requestSubtaskProposal),
          addQuickAction(QStringLiteral("次の一手"), QStringLiteral("scope"), &AIChatView::askForNextStep)})
        quickActions->addWidget(button);
    quickActions->addStretch();

    m_transcript = new ChatTranscript(this);
    m_activityText = new TextLabel({}, this);
    m_activityLine = makeActivityLine();
    m_composer = new ChatComposer(this);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(QMargins() + Metrics::panelPadding);
    layout->setSpacing(Metrics::bubbleSpacing);
    layout->addLayout(header);
    layout->addLayout(quickActions);
    layout->addWidget(m_transcript, 1);
    layout->addWidget(m_activityLine);
    layout->addWidget(m_composer);

    connect(m_transcript, &ChatTranscript::proposalConfirmed, this, &AIChatView::applyProposal);
    connect(m_transcript, &ChatTranscript::proposalCancelled, this, &AIChatView::cancelProposal);
    connect(m_composer, &ChatComposer::submitted, this, &AIChatView::send);
    follow();
}

TextButton *AIChatView::addQuickAction(const QString &label, const QString &symbol,
                                       void (AIChatView::*action)())
{
    auto *button = new TextButton(label, TextButton::Kind::Plain, this);
    button->setSymbol(symbol);
    connect(button, &TextButton::clicked, this, action);
    m_quickActions.append(button);
    return button;
}

QWidget *AIChatView::makeActivityLine()
{
    auto *line = new QWidget(this);
    auto *layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Metrics::bubbleSpacing);
    m_activityText->setFont(Fonts::small());
    m_activityText->setColor(&Theme::secondaryInk);
    layout->addWidget(new BusyIndicator(line));
    layout->addWidget(m_activityText, 1);
    return line;
}

void AIChatView::focusComposer()
{
    m_composer->focusInput();
}

void AIChatView::send()
{
    const std::optional<AIChatRequest> request = m_state.say(m_composer->draft());
    if (!request)
        return;
    m_composer->setDraft({});
    follow();
    m_transcript->scrollToEnd();
    switch (*request) {
    case AIChatRequest::Sort:
        requestSortProposal();
        break;
    case AIChatRequest::Split:
        requestSubtaskProposal();
        break;
    case AIChatRequest::Answer:
        askGeneralQuestion(m_state.messages.constLast().text);
    }
}

void AIChatView::askForNextStep()
{
    m_composer->setDraft(QStringLiteral("今のTODOを見て、最初にやるべき1つと理由を短く教えて"));
    send();
}

template<typename Result, typename Take>
void AIChatView::await(AIChatRequest request, const QFuture<Result> &answer, Take take)
{
    follow();
    onAnswer(
        answer, this,
        [this, take](const Result &result) {
            take(result);
            follow();
        },
        [this, request](const AIError &error) {
            m_state.fail(request, error);
            follow();
        });
}

void AIChatView::askGeneralQuestion(const QString &text)
{
    if (!m_state.begin(AIChatRequest::Answer))
        return;
    await(AIChatRequest::Answer, m_store.askAssistant(text),
          [this](const QString &answer) { m_state.answer(answer); });
}

void AIChatView::requestSortProposal()
{
    if (!m_state.begin(AIChatRequest::Sort))
        return;
    await(AIChatRequest::Sort, m_store.proposePriorityOrderWithLLM(),
          [this](const QList<QUuid> &ids) { m_state.propose(sortProposal(ids, m_store.tasks.value())); });
}

void AIChatView::requestSubtaskProposal()
{
    const std::optional<TaskItem> task = m_store.activeTask();
    if (!task) {
        m_state.missTaskToSplit();
        follow();
        return;
    }
    if (!m_state.begin(AIChatRequest::Split))
        return;
    await(AIChatRequest::Split, m_store.proposeSubtasksWithLLM(*task),
          [this, task = *task](const QStringList &titles) { m_state.propose(splitProposal(task, titles)); });
}

void AIChatView::applyProposal(const AIActionProposal &proposal)
{
    if (const auto *sort = std::get_if<AIActionProposal::Sort>(&proposal.action)) {
        m_store.applyPriorityOrder(sort->ids);
        m_store.setSortStatus(QStringLiteral("AIの提案を反映しました"));
    } else if (const auto *split = std::get_if<AIActionProposal::Split>(&proposal.action)) {
        m_store.insertSubtasks(split->subtasks, split->parentID);
        m_store.setSortStatus(QStringLiteral("AIのサブタスクを追加しました"));
    }
    m_state.confirmProposal();
    follow();
}

void AIChatView::cancelProposal()
{
    m_state.cancelProposal();
    follow();
}

void AIChatView::follow()
{
    for (TextButton *button : std::as_const(m_quickActions)) {
        // Disabled, it would hand the focus on to whatever comes next.
        if (m_state.isSending && button->hasFocus())
            focusComposer();
        button->setEnabled(!m_state.isSending);
    }
    m_composer->setSendEnabled(!m_state.isSending);
    m_activityText->setText(m_state.activityText);
    m_activityLine->setVisible(!m_state.activityText.isEmpty());
    m_transcript->setMessages(m_state.messages);
    m_transcript->setProposal(m_state.pendingProposal);
}

void AIChatView::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), Theme::current().background);
}

} // namespace wrenfold
