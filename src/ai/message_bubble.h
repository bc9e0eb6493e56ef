// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_chat_message.h"
#include "look/selectable_text.h"

namespace wrenfold {

/// One message of the transcript, on a surface whose corner points to who said it.
class MessageBubble : public SelectableText
{
    Q_OBJECT

public:
    explicit MessageBubble(QWidget *parent = nullptr);

    void setMessage(const AIChatMessage &message);
    [[nodiscard]] const AIChatMessage &message() const { return m_message; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AIChatMessage m_message;
};

} // namespace wrenfold
