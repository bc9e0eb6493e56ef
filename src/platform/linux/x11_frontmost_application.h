// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop_entries.h"
#include "platform/frontmost_application.h"
#include "platform/linux/x11_connection.h"

#include <QAbstractNativeEventFilter>
#include <QDateTime>
#include <QObject>

namespace wrenfold {

class Clock;
class InstalledApplications;

/// The application of the active X11 window. To be made after the application object and used while that exists.
class X11FrontmostApplication : public QObject,
                                public FrontmostApplication,
                                private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Both must outlive this object.
    X11FrontmostApplication(InstalledApplications &installed, Clock &clock);
    ~X11FrontmostApplication() override;

    [[nodiscard]] Availability availability() const override;
    void start() override;
    void stop() override;
    /// Between two windows no window is active for a moment; for half a second the answer stays what it was.
    [[nodiscard]] std::optional<RunningApplication> current() const override;
    void hide(const RunningApplication &application) override;

private:
    /// On their way to the server, about one window. Each wants its answer taken.
    struct IdentityQuestions;
    struct PlaceQuestions;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void readActiveWindow();
    void identify();
    void listen(xcb_window_t window, uint32_t events) const;
    [[nodiscard]] bool isShown(xcb_window_t window) const;
    [[nodiscard]] IdentityQuestions askIdentity(xcb_window_t window) const;
    [[nodiscard]] WindowIdentity identity(const IdentityQuestions &questions) const;
    [[nodiscard]] std::optional<RunningApplication> application(xcb_window_t window) const;
    [[nodiscard]] bool canBeHidden(const PlaceQuestions &questions, uint32_t currentDesktop) const;

    InstalledApplications &m_installed;
    Clock &m_clock;
    const X11Connection m_connection;
    const std::vector<xcb_atom_t> m_atoms;
    bool m_isStarted = false;
    xcb_window_t m_activeWindow = XCB_WINDOW_NONE;
    std::optional<RunningApplication> m_known; ///< The active window's, if it can be told.
    std::optional<RunningApplication> m_lastKnown;
    QDateTime m_unknownSince;
};

} // namespace wrenfold
