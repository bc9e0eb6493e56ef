// SPDX-License-Identifier: MIT
#pragma once

#include "platform/notification_center.h"

namespace wrenfold {

/// For a desktop without notifications. Answers at once.
class NoNotificationCenter : public NotificationCenter
{
public:
    [[nodiscard]] Availability availability() const override
    {
        return {Availability::Level::NotAvailable, QStringLiteral("This desktop has no notifications.")};
    }
    void requestAuthorization(std::function<void(bool isGranted, const Error &error)> answered) override
    {
        answered(false, std::nullopt);
    }
    void post(const Notification & /*notification*/, std::function<void(const Error &error)> posted) override
    {
        posted(QStringLiteral("this desktop has no notifications"));
    }
    void onClick(std::function<void()> /*clicked*/) override {}
};

} // namespace wrenfold
