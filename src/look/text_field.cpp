// SPDX-License-Identifier: MIT
#include "look/text_field.h"

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

TextField::TextField(const QString &name, QWidget *parent)
    : QLineEdit(parent)
{
    setFrame(false);
    setFont(Fonts::body());
    setPlaceholderText(name);
    setAccessibleName(name);
    m_caretTimer.setSingleShot(true);
    m_caretTimer.setInterval(Durations::caretRest);
    connect(&m_caretTimer, &QTimer::timeout, this, &TextField::restCaret);
    applyTheme();
}

TextField::~TextField()
{
    wakeCaret();
}

void TextField::setCommittedText(const QString &text)
{
    m_committedText = text;
    // Also forgets what could be undone, as it lies before the commit.
    setText(text);
}

void TextField::commit()
{
    const int cursor = cursorPosition();
    setCommittedText(text());
    setCursorPosition(cursor);
}

void TextField::contextMenuEvent(QContextMenuEvent *event)
{
    // Qt's own speaks the toolkit's language and undoes what is committed.
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu](const QString &text, auto act, bool isEnabled) {
        menu->addAction(text, act)->setEnabled(isEnabled);
    };
    add(
        QStringLiteral("元に戻す"), [this] { undo(); }, hasUncommittedText() && isUndoAvailable());
    add(
        QStringLiteral("やり直す"), [this] { redo(); }, hasUncommittedText() && isRedoAvailable());
    menu->addSeparator();
    add(
        QStringLiteral("切り取り"), [this] { cut(); }, hasSelectedText());
    add(
        QStringLiteral("コピー"), [this] { copy(); }, hasSelectedText());
    add(
        QStringLiteral("貼り付け"), [this] { paste(); }, !QGuiApplication::clipboard()->text().isEmpty());
    add(
        QStringLiteral("すべて選択"), [this] { selectAll(); }, !text().isEmpty());
    menu->popup(event->globalPos());
}

bool TextField::hasUncommittedText() const
{
    return m_isComposing || text() != m_committedText;
}

void TextField::setCaretRest(std::chrono::milliseconds delay)
{
    m_caretTimer.setInterval(delay);
}

bool TextField::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (isUndo(key) || isRedo(key)) {
            event->setAccepted(hasUncommittedText());
            return hasUncommittedText();
        }
    }
    // A field that is not yet shown hears of no change, but is polished when it is.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::Polish)
        applyTheme();
    return QLineEdit::event(event);
}

void TextField::keyPressEvent(QKeyEvent *event)
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
    else
        QLineEdit::keyPressEvent(event);
}

void TextField::inputMethodEvent(QInputMethodEvent *event)
{
    wakeCaret();
    m_caretTimer.start();
    m_isComposing = !event->preeditString().isEmpty();
    QLineEdit::inputMethodEvent(event);
}

void TextField::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    m_caretTimer.start();
}

void TextField::focusOutEvent(QFocusEvent *event)
{
    m_caretTimer.stop();
    wakeCaret();
    m_isComposing = false;
    QLineEdit::focusOutEvent(event);
}

void TextField::applyTheme()
{
    const Theme &theme = Theme::current();
    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, theme.ink);
    colors.setColor(QPalette::PlaceholderText, theme.tertiaryInk);
    colors.setColor(QPalette::Highlight, theme.accent);
    colors.setColor(QPalette::HighlightedText, theme.onAccent);
    if (colors != palette())
        setPalette(colors);
}

void TextField::restCaret()
{
    // Qt blinks by a timer in each field that follows this one value; a field by itself cannot be told.
    QStyleHints *hints = QGuiApplication::styleHints();
    m_flashTime = hints->cursorFlashTime();
    hints->setCursorFlashTime(0);
}

void TextField::wakeCaret()
{
    if (!m_flashTime)
        return;
    QGuiApplication::styleHints()->setCursorFlashTime(*m_flashTime);
    m_flashTime.reset();
}

} // namespace wrenfold
