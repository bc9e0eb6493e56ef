// SPDX-License-Identifier: MIT
#pragma once

#include "platform/frontmost_application.h"
#include "platform/installed_applications.h"
#include "platform/linux/foreign_toplevels.h"

#include <memory>

namespace wrenfold {

/// The front application under sway, labwc, wayfire and other compositors made with wlroots. Connected to the
/// compositor only from start() to stop().
class WlrootsFrontmostApplication : public QObject, public FrontmostApplication
{
    Q_OBJECT

public:
    /// Null if this session's compositor does not tell of other programs' windows. Waits at most half a second for its
    /// answer. `installed` has to outlive the object.
    [[nodiscard]] static std::unique_ptr<WlrootsFrontmostApplication>
    connectIfOffered(InstalledApplications &installed);

    [[nodiscard]] Availability availability() const override;
    void start() override;
    void stop() override;
    [[nodiscard]] std::optional<RunningApplication> current() const override { return m_current; }
    void keepInFront() override;
    void hide(const RunningApplication &application) override;

private:
    explicit WlrootsFrontmostApplication(InstalledApplications &installed);

    void follow();
    void identify();
    void leaveGoneCompositor();

    InstalledApplications &m_installed;
    std::unique_ptr<ForeignToplevels> m_toplevels; ///< Null while stopped, and after the compositor has gone.
    std::optional<RunningApplication> m_current;
    bool m_isCompositorGone = false;
    bool m_cannotHide = false; ///< A window stayed in sight, and nobody is there to ask for more.
};

} // namespace wrenfold
