// SPDX-License-Identifier: MIT
#pragma once

#include "platform/global_shortcuts.h"

namespace wrenfold {

/// For a desktop that gives programs no global shortcuts.
class NoGlobalShortcuts final : public GlobalShortcuts
{
public:
    [[nodiscard]] Availability availability() const override
    {
        return {Availability::Level::NotAvailable,
                QStringLiteral("This desktop gives programs no global keys: ") + globalShortcutsRemedy()};
    }
    [[nodiscard]] bool asksUser() const override { return false; }
    void installEventHandler(const EventHandler & /*handler*/) override { m_hasEventHandler = true; }
    [[nodiscard]] bool hasEventHandler() const override { return m_hasEventHandler; }
    [[nodiscard]] bool registerShortcut(const GlobalShortcut & /*shortcut*/) override { return false; }
    void unregisterShortcut(uint32_t /*id*/) override {}

private:
    bool m_hasEventHandler = false;
};

} // namespace wrenfold
