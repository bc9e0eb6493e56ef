// SPDX-License-Identifier: MIT
#pragma once

#include "platform/panel_window.h"

#include <QList>

#include <utility>

namespace wrenfold {

/// A desktop that grants the panel's window everything and notes it down. Below the interface is what a test
/// steers and looks at.
class FakePanelWindow final : public PanelWindow
{
public:
    [[nodiscard]] Availability availability() const override { return m_availability; }
    [[nodiscard]] Availability workspacesAvailability() const override { return m_workspacesAvailability; }
    [[nodiscard]] Qt::WindowFlags flags() const override
    {
        return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    }
    void watchTranslucency(std::function<void(bool)> listener) override
    {
        m_translucencyListener = std::move(listener);
        setTranslucencyAvailable(m_isTranslucencyAvailable);
    }
    void pin(QWindow &window, PanelLevel level) override { m_pinned.append({&window, level}); }
    void bringBack(QWindow &window) override { m_broughtBack.append(&window); }
    void accompany(QWindow &window, CompanionKind kind) override { m_companions.append({&window, kind}); }

    void setAvailability(const Availability &availability) { m_availability = availability; }
    void setWorkspacesAvailability(const Availability &availability)
    {
        m_workspacesAvailability = availability;
    }
    void setTranslucencyAvailable(bool isAvailable)
    {
        m_isTranslucencyAvailable = isAvailable;
        if (m_translucencyListener)
            m_translucencyListener(isAvailable);
    }

    struct Pinned
    {
        QWindow *window; ///< Not owned.
        PanelLevel level;

        friend bool operator==(const Pinned &, const Pinned &) = default;
    };

    struct Companion
    {
        QWindow *window; ///< Not owned.
        CompanionKind kind;

        friend bool operator==(const Companion &, const Companion &) = default;
    };

    /// The calls of accompany() since the last time, in order.
    [[nodiscard]] QList<Companion> takeCompanions() { return std::exchange(m_companions, {}); }
    /// The calls of pin() since the last time, in order.
    [[nodiscard]] QList<Pinned> takePinned() { return std::exchange(m_pinned, {}); }
    /// The windows that were to be brought back since the last time.
    [[nodiscard]] QList<QWindow *> takeBroughtBack() { return std::exchange(m_broughtBack, {}); }

private:
    Availability m_availability;
    Availability m_workspacesAvailability;
    bool m_isTranslucencyAvailable = true;
    std::function<void(bool)> m_translucencyListener;
    QList<Pinned> m_pinned;
    QList<QWindow *> m_broughtBack;
    QList<Companion> m_companions;
};

} // namespace wrenfold
