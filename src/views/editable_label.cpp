// SPDX-License-Identifier: MIT
#include "views/editable_label.h"

#include "look/text_field.h"
#include "look/theme.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

/// What a line edit keeps free beside its text; taken back, so that the text does not move when editing begins.
constexpr int fieldMargin = 2;

} // namespace

EditableLabel::EditableLabel(const QString &fieldName, QWidget *parent)
    : QWidget(parent)
    , m_fieldName(fieldName)
    , m_label(new TextLabel({}, this))
{
    m_label->setAccessibleName(m_fieldName);
    connect(m_label, &TextLabel::clicked, this, &EditableLabel::clicked);
}

void EditableLabel::setText(const QString &text)
{
    m_label->setText(text);
    m_label->setAccessibleName(text.isEmpty() ? m_fieldName : text);
}

bool EditableLabel::isEditing() const
{
    return m_field && m_field->isVisibleTo(this);
}

void EditableLabel::beginEditing()
{
    if (!m_field) {
        m_field = new TextField(m_fieldName, this);
        m_field->setFont(m_label->font());
        m_field->installEventFilter(this);
        const QMargins margins = m_label->contentsMargins();
        m_field->setTextMargins(margins.left() - fieldMargin, 0, margins.right(), 0);
        setTabOrder(m_label, m_field);
    }
    m_field->setGeometry(rect());
    m_field->setCommittedText(m_label->text());
    m_field->selectAll();
    m_label->hide();
    m_field->show();
    m_field->setFocus(Qt::OtherFocusReason);
}

void EditableLabel::commitEditing()
{
    endEditing(true);
}

void EditableLabel::cancelEditing()
{
    endEditing(false);
}

void EditableLabel::endEditing(bool isCommitted)
{
    if (!isEditing())
        return;
    const QString text = m_field->text();
    // Hidden before anybody is told: hiding takes the focus away, which would end the editing once more.
    m_label->show();
    m_field->hide();
    const QString shownText = m_label->text();
    if (isCommitted && text != shownText && text.trimmed() != shownText)
        Q_EMIT edited(text);
}

void EditableLabel::closeByKey(bool isCommitted)
{
    endEditing(isCommitted);
    Q_EMIT closedByKey();
}

bool EditableLabel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress && !m_field->isComposing()) {
        // Taken here: a Return that went on would act on the row around.
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            closeByKey(key != Qt::Key_Escape);
            return true;
        }
    }
    if (watched == m_field && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // A menu of the field's own, or another window in front, is no end of editing.
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            endEditing(true);
    }
    return QWidget::eventFilter(watched, event);
}

void EditableLabel::keyPressEvent(QKeyEvent *event)
{
    // What the field has no use for is not for what lies around it either.
    event->setAccepted(isEditing());
}

void EditableLabel::paintEvent(QPaintEvent *)
{
    if (!isEditing())
        return;
    // A line under the text says that it is a field now; a ground would need room beside the text.
    const int bottom = (height() + m_field->fontMetrics().height()) / 2;
    QPainter painter(this);
    painter.fillRect(QRect(0, std::min(bottom, height() - 1), width(), 1), Theme::current().accent);
}

QSize EditableLabel::sizeHint() const
{
    return m_label->sizeHint();
}

int EditableLabel::heightForWidth(int width) const
{
    return m_label->heightForWidth(width);
}

void EditableLabel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_label->setGeometry(rect());
    if (m_field)
        m_field->setGeometry(rect());
}

} // namespace wrenfold
