// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace wrenfold {

/// From now on, what the fonts of this family cannot draw is drawn by the font that the system has for Japanese, before
/// others are tried. The program's texts are Japanese, whatever the desktop's language is; where that is another one, a
/// font for Japanese comes late, and to find it all the fonts before it are opened.
void preferJapaneseFallback(const QString &family);

} // namespace wrenfold
