// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"

#include <QSocketNotifier>

#include <optional>

namespace wrenfold {

/// One call when the system's clock shows a moment, or was set; see Clock::at(). Where the system has no timer left, the
/// call is never made.
class WallClockCall final : public ScheduledCall
{
public:
    WallClockCall(const QDateTime &moment, std::function<void()> call);
    ~WallClockCall() override;
    Q_DISABLE_COPY_MOVE(WallClockCall)

private:
    void arrived();

    int m_timer; ///< A file descriptor; negative if there is none.
    std::optional<QSocketNotifier> m_notifier;
    std::function<void()> m_call;
};

} // namespace wrenfold
