// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class QFont;

namespace wrenfold {

/// A tool tip that shows `text` exactly, whatever it looks like: Qt takes a text that resembles markup for
/// markup. Line breaks stay; only long lines wrap. An empty text gives an empty tool tip.
[[nodiscard]] QString plainToolTip(const QString &text);

/// Whether the character is a line break, a tab or another control character.
[[nodiscard]] bool breaksLine(QChar character);

/// The text in one line: every line break, tab and other control character becomes a space.
[[nodiscard]] QString oneLine(const QString &text);

/// The text, closed in where needed, for a line of its own that is laid out from left to right: its direction is the one
/// given, or that of its first letter, and its bidi controls end with it.
[[nodiscard]] QString isolated(const QString &text, Qt::LayoutDirection direction = Qt::LayoutDirectionAuto);

struct ElidedText
{
    QStringList lines; ///< At least one. Not isolated.
    bool isElided = false;
};

/// `text` as one line, or broken into at most `maximumLines` of `width` pixels, ending in an ellipsis where
/// it does not fit.
[[nodiscard]] ElidedText elided(const QString &text, const QFont &font, int width, int maximumLines);

} // namespace wrenfold
