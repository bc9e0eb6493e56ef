// SPDX-License-Identifier: MIT
#pragma once

#include "ai/chat_transcript.h"
#include "ai/message_bubble.h"
#include "look/text_button.h"
#include "support/offscreen_silence.h"
#include "views/view_probes.h"

#include <QApplication>
#include <QScrollBar>

namespace wrenfold {

inline AIChatMessage message(const QString &text, AIChatMessage::Role role = AIChatMessage::Role::assistant)
{
    return {QUuid::createUuid(), role, text};
}

/// A window with a transcript between two buttons.
struct TranscriptInWindow : QWidget
{
    OffscreenSilence silence;
    TextButton before{QStringLiteral("before"), TextButton::Kind::Plain, this};
    ChatTranscript transcript{this};
    TextButton after{QStringLiteral("after"), TextButton::Kind::Plain, this};
    QList<AIChatMessage> messages;

    TranscriptInWindow()
    {
        resize(416, 400);
        before.setGeometry(0, 0, 60, 28);
        transcript.setGeometry(0, 30, 416, 300);
        after.setGeometry(0, 340, 60, 28);
        show();
        activateWindow();
        (void)QTest::qWaitForWindowActive(this);
    }

    void add(const QString &text, AIChatMessage::Role role = AIChatMessage::Role::assistant)
    {
        messages.append(message(text, role));
        transcript.setMessages(messages);
    }
    void addMany(int count)
    {
        for (int i = 0; i < count; ++i)
            messages.append(message(QStringLiteral("message %1").arg(i)));
        transcript.setMessages(messages);
    }
    [[nodiscard]] QScrollBar *bar() { return transcript.verticalScrollBar(); }
    [[nodiscard]] MessageBubble *bubble(const QString &text)
    {
        for (MessageBubble *bubble : shown<MessageBubble>(transcript)) {
            if (bubble->text() == text)
                return bubble;
        }
        return nullptr;
    }
    /// Whether the whole of the message can be seen.
    [[nodiscard]] bool isInSight(const QString &text)
    {
        const MessageBubble *found = bubble(text);
        return found && transcript.viewport()->rect().contains(found->geometry());
    }
};

} // namespace wrenfold
