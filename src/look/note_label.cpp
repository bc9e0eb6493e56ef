// SPDX-License-Identifier: MIT
#include "look/note_label.h"

#include "look/plain_text.h"
#include "look/theme.h"

#include <QEvent>

namespace wrenfold {

NoteLabel::NoteLabel(const QString &text, QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setText(text);
    applyTheme();
}

void NoteLabel::setState(const QString &text)
{
    setText(oneLine(text));
    setVisible(!text.isEmpty());
}

bool NoteLabel::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ApplicationFontChange:
    case QEvent::PaletteChange:
    case QEvent::Polish: // One that is not yet shown hears of no change.
        applyTheme();
        break;
    default:
        break;
    }
    return QLabel::event(event);
}

void NoteLabel::applyTheme()
{
    if (const QFont font = Fonts::note(); font.resolve(this->font()) != this->font())
        setFont(font);
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, Theme::current().secondaryInk);
    if (colors != palette())
        setPalette(colors);
}

} // namespace wrenfold
