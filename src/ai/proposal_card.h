// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_chat_message.h"

#include <QWidget>

class QVBoxLayout;

namespace wrenfold {

class TextButton;
class TextLabel;

/// A proposal, and the two buttons that end it.
class ProposalCard : public QWidget
{
    Q_OBJECT

public:
    explicit ProposalCard(QWidget *parent = nullptr);

    void setProposal(const AIActionProposal &proposal);

Q_SIGNALS:
    void confirmed();
    void cancelled();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    TextLabel *m_title;
    TextLabel *m_detail;
    QVBoxLayout *m_items;
    TextButton *m_confirm;
};

} // namespace wrenfold
