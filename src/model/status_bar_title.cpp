// SPDX-License-Identifier: MIT
#include "model/status_bar_title.h"

#include <QTextBoundaryFinder>

namespace wrenfold {

namespace {

/// The title whole if it has at most this many characters; else only its first ones, and the ellipsis.
QString shortened(const QString &title, int longestWhole, int first, const QString &ellipsis)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, title);
    qsizetype cut = 0;
    for (int count = 1; count <= longestWhole + 1; ++count) {
        const qsizetype boundary = finder.toNextBoundary();
        if (boundary < 0)
            return title;
        if (count == first)
            cut = boundary;
    }
    return title.left(cut) + ellipsis;
}

} // namespace

QString statusBarTitle(const QString &title)
{
    return shortened(title, 18, 16, QStringLiteral("…"));
}

QString statusMenuTitle(const QString &title)
{
    return shortened(title, 24, 21, QStringLiteral("..."));
}

} // namespace wrenfold
