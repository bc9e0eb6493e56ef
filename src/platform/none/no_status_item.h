// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status_item.h"

namespace wrenfold {

/// For a desktop without a status area.
class NoStatusItem final : public StatusItem
{
public:
    [[nodiscard]] Availability availability() const override
    {
        return {Availability::Level::NotAvailable, QStringLiteral("This desktop has no status area.")};
    }
    [[nodiscard]] Availability labelAvailability() const override { return availability(); }
    void show(const Actions &actions) override { actions.labelShown(false); }
    void setContent(const StatusItemContent & /*content*/) override {}
    void updateMenu() override {}
};

} // namespace wrenfold
