// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

namespace wrenfold {

/// The desktop's font for our texts, which are Japanese whatever the desktop's language is.
///
/// A family that is no font's own name, such as "Sans Serif", stands for another one in each language; it is replaced by
/// the one for Japanese. To a font's own family it is added, from now on: what that cannot draw, this one draws. Where the
/// desktop's language is another one, a font for Japanese would else come late, and all the fonts before it be opened.
[[nodiscard]] QFont fontForJapanese(const QFont &desktops);

/// Reads the system's configuration of fonts, which takes some milliseconds, and keeps it for the whole program. For a
/// thread beside the making of the application object.
void readFontConfiguration();

} // namespace wrenfold
