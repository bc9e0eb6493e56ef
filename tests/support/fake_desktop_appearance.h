// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop_appearance.h"

#include <utility>

namespace wrenfold {

/// A desktop whose user has no wishes, until a test has some.
class FakeDesktopAppearance final : public DesktopAppearance
{
public:
    void follow(std::function<void(const Appearance &)> changed) override { m_changed = std::move(changed); }

    void set(const Appearance &appearance)
    {
        if (appearance == std::exchange(m_told, appearance) || !m_changed)
            return;
        m_changed(appearance);
    }

private:
    std::function<void(const Appearance &)> m_changed;
    Appearance m_told;
};

} // namespace wrenfold
