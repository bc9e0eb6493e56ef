// SPDX-License-Identifier: MIT
#pragma once

#include "platform/modifier_keys.h"

#include <utility>

namespace wrenfold {

/// Keys that a test holds down.
class FakeModifierKeys final : public ModifierKeys
{
public:
    [[nodiscard]] Availability availability() const override { return {}; }

    void watchControl(std::function<void(bool)> changed) override
    {
        m_changed = std::move(changed);
        if (m_changed)
            m_changed(m_isDown);
    }

    void setControl(bool isDown)
    {
        if (isDown != std::exchange(m_isDown, isDown) && m_changed)
            m_changed(isDown);
    }

    [[nodiscard]] bool isWatched() const { return bool(m_changed); }

private:
    std::function<void(bool)> m_changed;
    bool m_isDown = false;
};

} // namespace wrenfold
