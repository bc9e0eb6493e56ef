// SPDX-License-Identifier: MIT
#include "ai/proposal_card.h"

#include "look/painting.h"
#include "look/symbol_label.h"
#include "look/text_button.h"
#include "look/text_label.h"

#include <QPainter>
#include <QVBoxLayout>

namespace wrenfold {

namespace {

constexpr int mostLines = 3; ///< Of a title; what is longer can be read as its tool tip.

} // namespace

ProposalCard::ProposalCard(QWidget *parent)
    : QWidget(parent)
    , m_title(new TextLabel({}, this))
    , m_detail(new TextLabel({}, this))
    , m_items(new QVBoxLayout)
    , m_confirm(new TextButton({}, TextButton::Kind::Primary, this))
{
    auto *cancel = new TextButton(QStringLiteral("キャンセル"), TextButton::Kind::Plain, this);
    m_title->setFont(Fonts::strong());
    m_detail->setFont(Fonts::small());
    m_detail->setColor(&Theme::secondaryInk);
    m_detail->setMaximumLines(mostLines);
    m_detail->setTextDirection(Qt::LeftToRight);
    connect(m_confirm, &TextButton::clicked, this, &ProposalCard::confirmed);
    connect(cancel, &TextButton::clicked, this, &ProposalCard::cancelled);

    auto *heading = new QHBoxLayout;
    heading->setSpacing(Metrics::rowSpacing);
    heading->addWidget(new SymbolLabel(QStringLiteral("sparkles"), this));
    heading->addWidget(m_title, 1);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Metrics::bubbleSpacing);
    buttons->addWidget(m_confirm);
    buttons->addWidget(cancel);
    buttons->addStretch();
    m_items->setSpacing(0);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Metrics::proposalPadding, Metrics::proposalVerticalPadding,
                               Metrics::proposalPadding, Metrics::proposalVerticalPadding);
    layout->setSpacing(0);
    layout->addLayout(heading);
    layout->addSpacing(3);
    layout->addWidget(m_detail);
    layout->addSpacing(7);
    layout->addLayout(m_items);
    layout->addSpacing(9);
    layout->addLayout(buttons);
}

void ProposalCard::setProposal(const AIActionProposal &proposal)
{
    m_title->setText(proposal.title);
    m_detail->setText(proposal.detail);
    m_confirm->setLabel(proposal.confirmTitle);
    while (QLayoutItem *item = m_items->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    int number = 0;
    for (const QString &title : proposal.items) {
        auto *label = new TextLabel(QStringLiteral("%1. ").arg(++number) + title, this);
        label->setMaximumLines(mostLines);
        label->setTextDirection(Qt::LeftToRight); // The number is in front, whatever follows.
        m_items->addWidget(label);
        label->show(); // Or its layout leaves it out until later, if the card is in sight already.
    }
}

void ProposalCard::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    Painting::roundedCard(painter, rect(), Metrics::proposalRadius, {theme.accentSoft, theme.accentLine, {}});
}

} // namespace wrenfold
