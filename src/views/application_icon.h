// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace wrenfold {

/// The icon of the application whose .desktop file lies at `path`: from the desktop's icon theme, or from the file
/// that the entry names. Null if there is none, or none that can be shown. An icon file is anybody's: what is no
/// regular file, larger than 1 MiB, no PNG, XPM or SVG, or an image that takes far more room than its file, is none.
[[nodiscard]] QIcon applicationIcon(const QString &path);

} // namespace wrenfold
