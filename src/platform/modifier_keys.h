// SPDX-License-Identifier: MIT
#pragma once

#include "platform/availability.h"

#include <functional>

namespace wrenfold {

/// Which modifier keys are held down.
class ModifierKeys
{
public:
    virtual ~ModifierKeys() = default;

    /// Limited where only the keys that are pressed in our own windows are seen.
    [[nodiscard]] virtual Availability availability() const = 0;

    /// Calls `changed` at once and whenever the Control key, the left or the right one, went down or came up. There is
    /// one listener; an empty one ends it.
    virtual void watchControl(std::function<void(bool isDown)> changed) = 0;
};

} // namespace wrenfold
