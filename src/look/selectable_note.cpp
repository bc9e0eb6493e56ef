// SPDX-License-Identifier: MIT
#include "look/selectable_note.h"

#include "look/copy_menu.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>

namespace wrenfold {

SelectableNote::SelectableNote(const QString &text, QWidget *parent)
    : NoteLabel(text, parent)
{
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::StrongFocus); // Qt lets only a click come in.
}

bool SelectableNote::event(QEvent *event)
{
    // There is nothing to undo here; Qt would keep the keys from the window all the same.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo))
            return false;
    }
    return NoteLabel::event(event);
}

void SelectableNote::contextMenuEvent(QContextMenuEvent *event)
{
    const auto copy = [this] {
        QGuiApplication::clipboard()->setText(hasSelectedText() ? selectedText() : text());
    };
    openCopyMenu(*this, event->globalPos(),
                 {copy, [this] { setSelection(0, static_cast<int>(text().size())); }});
}

} // namespace wrenfold
