// SPDX-License-Identifier: MIT
#pragma once

#include "platform/panel_window.h"

#include <QList>

namespace wrenfold {

/// A desktop that grants the panel's window everything and notes it down. Below the interface is what a test
/// steers and looks at.
class FakePanelWindow final : public PanelWindow
{
public:
    [[nodiscard]] Availability availability() const override { return m_availability; }
    [[nodiscard]] Qt::WindowFlags flags() const override
    {
        return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    }
    [[nodiscard]] bool isTranslucencyAvailable() const override { return m_isTranslucencyAvailable; }
    void joinAllWorkspaces(QWindow &window) override { m_joined.append(&window); }

    void setAvailability(const Availability &availability) { m_availability = availability; }
    void setTranslucencyAvailable(bool isAvailable) { m_isTranslucencyAvailable = isAvailable; }

    /// The windows that joined all workspaces, in order, one entry a call. Not owned.
    [[nodiscard]] const QList<QWindow *> &joined() const { return m_joined; }

private:
    Availability m_availability;
    bool m_isTranslucencyAvailable = true;
    QList<QWindow *> m_joined;
};

} // namespace wrenfold
