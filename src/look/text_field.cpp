// SPDX-License-Identifier: MIT
#include "look/text_field.h"

#include "look/theme.h"

#include <QEvent>

namespace wrenfold {

TextField::TextField(const QString &name, QWidget *parent)
    : LineEdit(parent)
{
    setFrame(false);
    setFont(Fonts::body());
    setPlaceholderText(name);
    setAccessibleName(name);
    applyTheme();
}

bool TextField::event(QEvent *event)
{
    // A field that is not yet shown hears of no change, but is polished when it is.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::Polish)
        applyTheme();
    return LineEdit::event(event);
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

} // namespace wrenfold
