// SPDX-License-Identifier: MIT
#include "views/status_line.h"

#include "look/text_button.h"
#include "look/text_label.h"

#include <algorithm>

namespace wrenfold {

StatusLine::StatusLine(std::function<void()> undo, QWidget *parent)
    : QWidget(parent)
    , m_text(new TextLabel({}, this))
    , m_undo(new TextButton(QStringLiteral("元に戻す"), TextButton::Kind::Link, this))
{
    setFixedHeight(Metrics::statusHeight);
    m_text->setFont(Fonts::small());
    m_text->setColor(&Theme::secondaryInk);
    m_undo->hide();
    connect(m_undo, &TextButton::clicked, this, std::move(undo));
}

void StatusLine::setStatus(const QString &text, bool isUndoOffered)
{
    m_text->setText(text.isEmpty() && isUndoOffered ? QStringLiteral("削除しました") : text);
    m_text->setVisible(!m_text->text().isEmpty());
    if (!isUndoOffered && m_undo->hasFocus())
        focusPreviousChild(); // Hidden, it would leave the keyboard with nobody.
    m_undo->setVisible(isUndoOffered);
    placeChildren();
}

void StatusLine::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeChildren();
}

void StatusLine::placeChildren()
{
    const int undoWidth = m_undo->isHidden() ? 0 : m_undo->sizeHint().width() + Metrics::statusSpacing;
    const int textWidth = std::min(m_text->sizeHint().width(), width() - undoWidth);
    m_text->setGeometry(0, 0, textWidth, height());
    m_undo->setGeometry(textWidth + Metrics::statusSpacing - Metrics::textButtonPadding, 0,
                        m_undo->sizeHint().width(), height());
}

} // namespace wrenfold
