// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"

namespace wrenfold {

/// The computer's clock. Calls are made by the event loop. Delays reach up to 24 days, and the time for which
/// the computer sleeps does not count towards them; moments have no such limits.
class SystemClock final : public Clock
{
public:
    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::unique_ptr<ScheduledCall> after(std::chrono::milliseconds delay,
                                                       std::function<void()> call) override;
    [[nodiscard]] std::unique_ptr<ScheduledCall> at(const QDateTime &moment,
                                                    std::function<void()> call) override;
    [[nodiscard]] std::unique_ptr<ScheduledCall> every(std::chrono::milliseconds interval,
                                                       std::function<void()> call) override;
};

} // namespace wrenfold
