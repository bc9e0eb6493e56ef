// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace wrenfold {

// Texts of the user's as the hosts of status areas take them, who read some of them as markup or as mnemonics.

/// In one line, which cannot change the direction of what stands beside it: control characters and line breaks become
/// spaces, bidi embeddings, overrides and isolates go.
[[nodiscard]] QString hostLine(const QString &text);

/// As the label of a menu's row, where an underscore would mark a mnemonic.
[[nodiscard]] QString hostMenuLabel(const QString &text);

/// As the second part of a tool tip, which is read as markup; the lines stay.
[[nodiscard]] QString hostMarkup(const QString &text);

} // namespace wrenfold
