// SPDX-License-Identifier: MIT
#include "look/line_edit.h"

#include "look/theme.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QStyleHints>

namespace wrenfold {

namespace {

bool isUndo(const QKeyEvent &event)
{
    return event.matches(QKeySequence::Undo);
}

/// Ctrl+Y is no redo key of Qt's on every desktop; in our windows it is.
bool isRedo(const QKeyEvent &event)
{
    return event.matches(QKeySequence::Redo) ||
           (event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier);
}

} // namespace

LineEdit::LineEdit(QWidget *parent)
    : QLineEdit(parent)
{
    m_caretTimer.setSingleShot(true);
    m_caretTimer.setInterval(Durations::caretRest);
    connect(&m_caretTimer, &QTimer::timeout, this, &LineEdit::restCaret);
}

LineEdit::~LineEdit()
{
    wakeCaret();
}

void LineEdit::setCommittedText(const QString &text)
{
    m_committedText = text;
    // Also forgets what could be undone, as it lies before the commit.
    setText(text);
}

void LineEdit::commit()
{
    const int cursor = cursorPosition();
    setCommittedText(text());
    setCursorPosition(cursor);
}

void LineEdit::contextMenuEvent(QContextMenuEvent *event)
{
    openMenu(event->globalPos());
}

void LineEdit::openMenu(const QPoint &position)
{
    const bool isMasked = echoMode() != QLineEdit::Normal;
    // Qt's own speaks the toolkit's language and undoes what is committed.
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu](const QString &text, bool isEnabled, auto act) {
        menu->addAction(text, act)->setEnabled(isEnabled);
    };
    add(QStringLiteral("元に戻す"), hasUncommittedText(), [this] { undoTyping(); });
    add(QStringLiteral("やり直す"), hasUncommittedText() && isRedoAvailable(), [this] { redo(); });
    menu->addSeparator();
    add(QStringLiteral("切り取り"), hasSelectedText() && !isMasked, [this] { cut(); });
    add(QStringLiteral("コピー"), hasSelectedText() && !isMasked, [this] { copy(); });
    add(QStringLiteral("貼り付け"), !QGuiApplication::clipboard()->text().isEmpty(), [this] { paste(); });
    add(QStringLiteral("すべて選択"), !text().isEmpty(), [this] { selectAll(); });
    menu->popup(position);
}

bool LineEdit::hasUncommittedText() const
{
    return m_isComposing || text() != m_committedText;
}

void LineEdit::setCaretRest(std::chrono::milliseconds delay)
{
    m_caretTimer.setInterval(delay);
}

bool LineEdit::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (isUndo(key) || isRedo(key)) {
            event->setAccepted(hasUncommittedText());
            return hasUncommittedText();
        }
    }
    return QLineEdit::event(event);
}

void LineEdit::keyPressEvent(QKeyEvent *event)
{
    wakeCaret();
    m_caretTimer.start();
    const bool isEnd =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape;
    if (m_isComposing && isEnd)
        return;
    const bool isRedoKey = isRedo(*event);
    if ((isRedoKey || isUndo(*event)) && !hasUncommittedText()) {
        event->ignore();
        return;
    }
    if (isRedoKey)
        redo();
    else if (isUndo(*event))
        undoTyping();
    else
        QLineEdit::keyPressEvent(event);
}

void LineEdit::inputMethodEvent(QInputMethodEvent *event)
{
    wakeCaret();
    m_caretTimer.start();
    m_isComposing = !event->preeditString().isEmpty();
    QLineEdit::inputMethodEvent(event);
}

void LineEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    m_caretTimer.start();
}

void LineEdit::focusOutEvent(QFocusEvent *event)
{
    m_caretTimer.stop();
    wakeCaret();
    m_isComposing = false;
    QLineEdit::focusOutEvent(event);
}

/// Qt's own undo empties a masked field, and has forgotten the steps before a text that a validator has put right.
void LineEdit::undoTyping()
{
    if (echoMode() == QLineEdit::Normal && isUndoAvailable())
        undo();
    else
        setText(m_committedText);
}

void LineEdit::restCaret()
{
    // Qt blinks by a timer in each field that follows this one value; a field by itself cannot be told.
    QStyleHints *hints = QGuiApplication::styleHints();
    m_flashTime = hints->cursorFlashTime();
    hints->setCursorFlashTime(0);
}

void LineEdit::wakeCaret()
{
    if (!m_flashTime)
        return;
    QGuiApplication::styleHints()->setCursorFlashTime(*m_flashTime);
    m_flashTime.reset();
}

} // namespace wrenfold
