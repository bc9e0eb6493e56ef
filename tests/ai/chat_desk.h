// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_chat_view.h"
#include "ai/chat_composer.h"
#include "ai/chat_transcript.h"
#include "ai/message_bubble.h"
#include "ai/proposal_card.h"
#include "look/text_field.h"
#include "model/uuid_text.h"
#include "support/http_server.h"
#include "support/offscreen_silence.h"
#include "views/view_probes.h"

#include <QPointer>
#include <QTcpSocket>

namespace wrenfold {

/// A chat in a window, whose service is a server of the test's that answers when it is told.
struct ChatDesk
{
    OffscreenSilence silence;
    HttpServer server;
    QList<QPointer<QTcpSocket>> waiting;
    StoreOnFakes fakes;
    AIChatView view{fakes.store};

    explicit ChatDesk(const TaskList &tasks = {}, std::optional<QUuid> activeTaskID = std::nullopt)
        : fakes(tasks, activeTaskID, ServiceOrigin{server.origin(), {}})
    {
        server.setAnswer([this](QTcpSocket &socket) { waiting.append(&socket); });
        fakes.store.apiKeyOverride.set(QStringLiteral("key"));
        view.resize(Metrics::chatWidth, Metrics::chatHeight);
        view.show();
        view.activateWindow();
        view.focusComposer();
        (void)QTest::qWaitForWindowActive(&view);
    }

    [[nodiscard]] const AIChatState &state() const { return view.state(); }
    [[nodiscard]] QString lastText() const { return state().messages.constLast().text; }
    [[nodiscard]] TextField *field() const { return view.findChild<TextField *>(); }
    [[nodiscard]] ChatTranscript *transcript() const { return view.findChild<ChatTranscript *>(); }
    /// The card in sight, or null.
    [[nodiscard]] ProposalCard *card() const { return shown<ProposalCard>(view).value(0); }
    /// The bubble in sight that says this, or null.
    [[nodiscard]] MessageBubble *bubble(const QString &text) const
    {
        for (MessageBubble *bubble : shown<MessageBubble>(view)) {
            if (bubble->text() == text)
                return bubble;
        }
        return nullptr;
    }

    void say(const QString &text) const
    {
        type(field(), text);
        QTest::keyClick(field(), Qt::Key_Return);
    }
    [[nodiscard]] bool waitForRequest(int count = 1)
    {
        return QTest::qWaitFor([&] { return waiting.size() == count; });
    }
    [[nodiscard]] bool waitUntilIdle() const
    {
        return QTest::qWaitFor([&] { return !state().isSending; });
    }
    /// Answers the request that comes as number `count`, and waits until the chat has taken it.
    [[nodiscard]] bool answer(const HttpServer::Answer &answer, int count = 1)
    {
        if (!waitForRequest(count))
            return false;
        answer(*waiting.last());
        return waitUntilIdle();
    }
    [[nodiscard]] static HttpServer::Answer order(const QList<QUuid> &ids)
    {
        QStringList texts;
        for (const QUuid &id : ids)
            texts.append(uuidText(id));
        return HttpServer::completion(
            QStringLiteral(R"({"ordered_ids":["%1"]})").arg(texts.join(QStringLiteral("\",\""))));
    }
    [[nodiscard]] static HttpServer::Answer subtasks(const QStringList &titles)
    {
        return HttpServer::completion(
            QStringLiteral(R"({"subtasks":["%1"]})").arg(titles.join(QStringLiteral("\",\""))));
    }
};

} // namespace wrenfold
