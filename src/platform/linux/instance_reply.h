// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace wrenfold {

/// What came of sending the running program a request, over the one way or the other.
struct InstanceReply
{
    enum class Outcome {
        Undelivered, ///< Nobody will carry it out; it can be sent again.
        Unanswered,  ///< It may be carried out, now or later; sent again, it would be carried out twice.
        Answered,
    };

    Outcome outcome = Outcome::Undelivered;
    QString text; ///< The answer; empty without one.
};

} // namespace wrenfold
