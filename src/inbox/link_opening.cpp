// SPDX-License-Identifier: MIT
#include "inbox/link_opening.h"

namespace wrenfold {

LinkOpening linkOpening(const QUrl &link)
{
    const QString scheme = link.scheme().toLower();
    if (scheme.isEmpty() || scheme == QLatin1String("file"))
        return LinkOpening::Never;
    for (const QLatin1String harmless :
         {QLatin1String("http"), QLatin1String("https"), QLatin1String("mailto")}) {
        if (scheme == harmless)
            return LinkOpening::AtOnce;
    }
    return LinkOpening::AskFirst;
}

} // namespace wrenfold
