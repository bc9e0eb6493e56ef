// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>

namespace wrenfold {

/// What to do when the user wants to open a link that came from outside.
enum class LinkOpening {
    AtOnce,   ///< Web pages and mail addresses.
    AskFirst, ///< Anything may be behind another scheme: only when the user has seen the whole link.
    Never, ///< A file of this machine, which might be a program; also what has no scheme, as that is a file's path.
};

[[nodiscard]] LinkOpening linkOpening(const QUrl &link);

} // namespace wrenfold
