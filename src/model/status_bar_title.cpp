// SPDX-License-Identifier: MIT
#include "model/status_bar_title.h"

#include <QTextBoundaryFinder>

namespace wrenfold {

QString statusBarTitle(const QString &title)
{
    constexpr int longestWhole = 18;
    constexpr int shortened = 16;

    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, title);
    qsizetype cut = 0;
    for (int count = 1; count <= longestWhole + 1; ++count) {
        const qsizetype boundary = finder.toNextBoundary();
        if (boundary < 0)
            return title;
        if (count == shortened)
            cut = boundary;
    }
    return title.left(cut) + QChar(0x2026);
}

} // namespace wrenfold
