// SPDX-License-Identifier: MIT
#pragma once

#include "app/launch_options.h"

#include <QString>

#include <functional>
#include <optional>

namespace wrenfold {

/// Sees to it that one program runs for each preferences folder, and carries requests to the one that does.
class SingleInstance
{
public:
    virtual ~SingleInstance() = default;

    enum class Claim {
        First,     ///< No other program runs; this one holds the claim until its process ends.
        Taken,     ///< Another one runs.
        Unguarded, ///< The claim cannot be made here (no folder, no locks): nobody can tell.
    };

    /// Makes the claim. To be called before anything that only one program may do. A claim that was taken is tried anew.
    [[nodiscard]] virtual Claim claim() = 0;

    /// For a start that found the claim taken: sends the running program a request and returns the text that it answers
    /// with, which is empty for most. Nothing when it did not answer within a few seconds, or has ended meanwhile.
    [[nodiscard]] virtual std::optional<QString> ask(Request request) = 0;

    /// For the first: from now on `answer` is called on the main thread whenever another start, or the desktop, asks for
    /// something; what it returns is sent back. Returns at once; whatever cannot be listened on is left out.
    virtual void listen(std::function<QString(Request request)> answer) = 0;
};

} // namespace wrenfold
