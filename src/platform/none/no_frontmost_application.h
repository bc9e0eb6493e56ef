// SPDX-License-Identifier: MIT
#pragma once

#include "platform/frontmost_application.h"

namespace wrenfold {

/// For a desktop that does not tell programs which window is active.
class NoFrontmostApplication final : public FrontmostApplication
{
public:
    [[nodiscard]] Availability availability() const override
    {
        return {Availability::Level::NotAvailable,
                QStringLiteral("This desktop does not tell which window is active.")};
    }
    void start() override {}
    void stop() override {}
    [[nodiscard]] std::optional<RunningApplication> current() const override { return std::nullopt; }
    void hide(const RunningApplication &) override {}
};

} // namespace wrenfold
