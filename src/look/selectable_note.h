// SPDX-License-Identifier: MIT
#pragma once

#include "look/note_label.h"

namespace wrenfold {

/// A note that can be selected and copied, by mouse and keyboard.
class SelectableNote : public NoteLabel
{
    Q_OBJECT

public:
    explicit SelectableNote(const QString &text, QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
};

} // namespace wrenfold
