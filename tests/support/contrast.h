// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace wrenfold {

/// What the eye sees where `upper`, perhaps translucent, lies on the opaque `lower`; in whole channel steps.
inline QColor over(const QColor &upper, const QColor &lower)
{
    const double share = upper.alphaF();
    const auto channel = [share](int a, int b) {
        return static_cast<int>(std::lround(a * share + b * (1 - share)));
    };
    return {channel(upper.red(), lower.red()), channel(upper.green(), lower.green()),
            channel(upper.blue(), lower.blue())};
}

/// Relative luminance as the Web Content Accessibility Guidelines define it.
inline double luminance(const QColor &color)
{
    const auto linear = [](int channel) {
        const double value = channel / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red()) + 0.7152 * linear(color.green()) + 0.0722 * linear(color.blue());
}

/// Their contrast, 1 to 21, of opaque colours.
inline double contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace wrenfold
