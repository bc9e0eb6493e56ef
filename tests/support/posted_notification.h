// SPDX-License-Identifier: MIT
#pragma once

#include "platform/notification_center.h"

#include <QStringList>

#include <memory>

namespace wrenfold {

/// Posts a notification and keeps the answers to it.
class PostedNotification
{
public:
    PostedNotification(NotificationCenter &center, const Notification &notification)
    {
        center.post(notification, [answers = m_answers](const NotificationCenter::Error &error) {
            answers->append(error.value_or(QString()));
        });
    }

    /// Empty texts for success, else the errors. There is to be one.
    [[nodiscard]] const QStringList &answers() const { return *m_answers; }
    [[nodiscard]] bool isAnswered() const { return !m_answers->isEmpty(); }

private:
    std::shared_ptr<QStringList> m_answers = std::make_shared<QStringList>();
};

} // namespace wrenfold
