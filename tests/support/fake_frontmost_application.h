// SPDX-License-Identifier: MIT
#pragma once

#include "platform/frontmost_application.h"

#include <QList>

namespace wrenfold {

/// A desktop whose applications come to the front as a test says. What is hidden is not in front any more.
class FakeFrontmostApplication final : public FrontmostApplication
{
public:
    [[nodiscard]] Availability availability() const override { return {}; }
    void start() override { m_isStarted = true; }
    void stop() override { m_isStarted = false; }
    [[nodiscard]] std::optional<RunningApplication> current() const override
    {
        return m_isStarted ? m_current : std::nullopt;
    }
    void hide(const RunningApplication &application) override
    {
        m_hidden.append(application);
        if (m_canHide && m_current == application)
            m_current.reset();
    }

    void setCurrent(const std::optional<RunningApplication> &application) { m_current = application; }
    /// Whether applications go when they are told to.
    void setCanHide(bool canHide) { m_canHide = canHide; }
    [[nodiscard]] bool isStarted() const { return m_isStarted; }
    [[nodiscard]] const QList<RunningApplication> &hidden() const { return m_hidden; }

private:
    bool m_isStarted = false;
    bool m_canHide = true;
    std::optional<RunningApplication> m_current;
    QList<RunningApplication> m_hidden;
};

} // namespace wrenfold
