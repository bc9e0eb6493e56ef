// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

namespace wrenfold {

/// How the user wants programs to look, as far as the desktop tells.
struct Appearance
{
    std::optional<bool> isDark; ///< None: the user has no preference.
    bool isHighContrast = false;
    bool isMotionReduced = false;

    friend bool operator==(const Appearance &, const Appearance &) = default;
};

/// The desktop's settings for how programs look.
class DesktopAppearance
{
public:
    virtual ~DesktopAppearance() = default;

    /// From now on `changed` is called, on the main thread, whenever the appearance is another than the one told last,
    /// at first than the default one: never inside this call, and not at all on a desktop that tells nothing. To be
    /// called once, and perhaps once more with nothing to end it.
    virtual void follow(std::function<void(const Appearance &)> changed) = 0;
};

} // namespace wrenfold
