// SPDX-License-Identifier: MIT
#include "look/selectable_note.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>

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
    // Qt's own speaks the toolkit's language.
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("コピー"), this,
                    [this] { QGuiApplication::clipboard()->setText(selectedText()); })
        ->setEnabled(hasSelectedText());
    menu->addAction(QStringLiteral("すべて選択"), this,
                    [this] { setSelection(0, static_cast<int>(text().size())); });
    menu->popup(event->globalPos());
}

} // namespace wrenfold
