// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace wrenfold {

/// Sees to it that one program runs for each preferences folder, and carries messages to the one that does.
class SingleInstance
{
public:
    virtual ~SingleInstance() = default;

    enum class Claim {
        First,     ///< No other program runs; this one holds the claim until its process ends.
        Taken,     ///< Another one runs.
        Unguarded, ///< The claim cannot be made here (no folder, no locks): nobody can tell.
    };

    /// Makes the claim. Call once, before anything that only one program may do.
    [[nodiscard]] virtual Claim claim() = 0;

    /// For a start that found the claim taken: asks the running program to show its panel. True when it answered
    /// within a few seconds.
    [[nodiscard]] virtual bool showRunning() = 0;

    /// For the first: from now on `showPanel` is called on the main thread whenever another start asks for it.
    /// Returns at once; whatever cannot be listened on is left out.
    virtual void listen(std::function<void()> showPanel) = 0;
};

} // namespace wrenfold
