// SPDX-License-Identifier: MIT
#pragma once

#include "platform/notification_center.h"

#include <QList>
#include <QStringList>

#include <utility>

namespace wrenfold {

/// Notifications that nobody sees. Below the interface is what a test steers and looks at.
class FakeNotificationCenter : public NotificationCenter
{
public:
    [[nodiscard]] Availability availability() const override { return m_availability; }
    void requestAuthorization(std::function<void(bool isGranted, const Error &error)> answered) override
    {
        m_questions.append(std::move(answered));
    }
    void post(const Notification &notification, std::function<void(const Error &error)> posted) override
    {
        m_posts.append({notification, std::move(posted)});
        m_listed.removeIf(
            [&](const Notification &listed) { return listed.identifier == notification.identifier; });
        m_listed.append(notification);
    }
    void onClick(std::function<void()> clicked) override { m_clicked = std::move(clicked); }

    /// Answers the questions for permission that have been asked and not answered.
    void answerQuestions(bool isGranted, const Error &error = {})
    {
        for (const auto &answered : std::exchange(m_questions, {}))
            answered(isGranted, error);
    }
    [[nodiscard]] qsizetype openQuestions() const { return m_questions.size(); }

    /// Says of every post that has not been answered how it went.
    void answerPosts(const Error &error = {})
    {
        for (const auto &[notification, posted] : std::exchange(m_posts, {}))
            posted(error);
    }

    /// Everything posted that no newer one of the same identifier has replaced, oldest first.
    [[nodiscard]] const QList<Notification> &listed() const { return m_listed; }
    /// What listed() says, which is forgotten.
    [[nodiscard]] QList<Notification> take() { return std::exchange(m_listed, {}); }
    /// The same, the identifiers only.
    [[nodiscard]] QStringList takeIdentifiers()
    {
        QStringList identifiers;
        for (const Notification &notification : take())
            identifiers.append(notification.identifier);
        return identifiers;
    }

    void setAvailability(const Availability &availability) { m_availability = availability; }

    void click()
    {
        if (m_clicked)
            m_clicked();
    }

private:
    Availability m_availability;
    QList<std::function<void(bool, const Error &)>> m_questions;
    QList<std::pair<Notification, std::function<void(const Error &)>>> m_posts;
    QList<Notification> m_listed;
    std::function<void()> m_clicked;
};

} // namespace wrenfold
