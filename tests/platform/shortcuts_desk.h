// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/portal_global_shortcuts.h"
#include "support/fake_shortcuts_portal.h"
#include "support/private_bus.h"

/// What the tests of the desktop portal's shortcuts start from.
namespace wrenfold {

inline constexpr int32_t signature = 0x574E4644;
inline const GlobalShortcut shortcutP{signature, 1, VirtualKey::P, 6400, QStringLiteral("Show or hide")};
inline const GlobalShortcut shortcutH{signature, 2, VirtualKey::H, 6400, QStringLiteral("Hide")};
inline const GlobalShortcut shortcutT{signature, 3, VirtualKey::T, 6400, QStringLiteral("New TODO")};
inline const auto idOfP = QStringLiteral("WNFD-1");
inline const auto idOfH = QStringLiteral("WNFD-2");
inline const auto idOfT = QStringLiteral("WNFD-3");

using Ids = QList<uint32_t>;

/// One address for all tests, because the bus library looks for it once in a process.
inline PrivateBus &theBus()
{
    static PrivateBus bus;
    return bus;
}

/// A bus with a portal that has yet to come, the program's side of it, and what that was told.
struct Desk
{
    PrivateBus &bus = theBus();
    FakeShortcutsPortal portal{bus.address()};
    Ids pressed;
    Ids refused;
    PortalGlobalShortcuts shortcuts;

    explicit Desk(std::chrono::milliseconds patience = std::chrono::seconds(30))
        : shortcuts(patience)
    {
        const QString error = bus.start();
        if (!error.isEmpty())
            qFatal("%s", qPrintable(error));
        shortcuts.installEventHandler({.pressed = [this](uint32_t id) { pressed << id; },
                                       .refused = [this](uint32_t id) { refused << id; }});
    }
    ~Desk() { bus.stop(); }

    /// Whether all three were taken for now.
    [[nodiscard]] bool registerAll()
    {
        return shortcuts.registerShortcut(shortcutP) && shortcuts.registerShortcut(shortcutH) &&
               shortcuts.registerShortcut(shortcutT);
    }
    [[nodiscard]] Availability::Level level() const { return shortcuts.availability().level; }
};

inline const Availability nothing =
    availabilityWithout({QStringLiteral("Ctrl+Alt+Super+P"), QStringLiteral("Ctrl+Alt+Super+H"),
                         QStringLiteral("Ctrl+Alt+Super+T")},
                        false);

} // namespace wrenfold
