// SPDX-License-Identifier: MIT
#include "views/inbox_source.h"

#include <array>
#include <utility>

namespace wrenfold {

Theme::Color sourceTint(const QString &source)
{
    // "mail" is in "gmail", "email" and "mailme" too. The first that is in the source counts.
    static const std::array<std::pair<QLatin1String, Theme::Color>, 6> tints = {{
        {QLatin1String("mail"), &Theme::urgentAndImportant},
        {QLatin1String("discord"), &Theme::important},
        {QLatin1String("line"), &Theme::green},
        {QLatin1String("voice"), &Theme::urgent},
        {QLatin1String("claude"), &Theme::pink},
        {QLatin1String("mcp"), &Theme::pink},
    }};
    for (const auto &[word, tint] : tints) {
        if (source.contains(word))
            return tint;
    }
    return &Theme::neither;
}

} // namespace wrenfold
