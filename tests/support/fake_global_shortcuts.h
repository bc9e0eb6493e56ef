// SPDX-License-Identifier: MIT
#pragma once

#include "platform/global_shortcuts.h"

#include <QList>

#include <algorithm>

namespace wrenfold {

/// Global shortcuts in memory. Below the interface is what a test steers and looks at.
class FakeGlobalShortcuts final : public GlobalShortcuts
{
public:
    [[nodiscard]] Availability availability() const override
    {
        if (m_refused.isEmpty())
            return {};
        return {Availability::Level::Limited, QStringLiteral("Another program holds a key.")};
    }
    [[nodiscard]] bool asksUser() const override { return false; }
    void installEventHandler(const EventHandler &handler) override
    {
        ++m_installations;
        m_handler = handler;
    }
    [[nodiscard]] bool hasEventHandler() const override { return m_installations > 0; }
    [[nodiscard]] bool registerShortcut(const GlobalShortcut &shortcut) override
    {
        m_offered << shortcut;
        if (m_held.contains(shortcut.keyCode)) {
            m_refused << shortcut.id;
            return false;
        }
        m_registered << shortcut;
        return true;
    }
    void unregisterShortcut(uint32_t id) override
    {
        m_registered.removeIf([id](const GlobalShortcut &shortcut) { return shortcut.id == id; });
    }

    /// Another program holds this key: it is refused from now on.
    void hold(uint32_t keyCode) { m_held << keyCode; }
    /// As when the user says no, after the registration.
    void refuse(uint32_t keyCode)
    {
        const uint32_t id = idOf(keyCode);
        m_refused << id;
        unregisterShortcut(id);
        m_handler.refused(id);
    }
    /// A press of a registered key; of another one nothing comes, as on a keyboard.
    void press(uint32_t keyCode) const
    {
        if (const uint32_t id = idOf(keyCode); id != 0)
            pressID(id);
    }
    /// A press that was under way when its key was unregistered.
    void pressID(uint32_t id) const { m_handler.pressed(id); }

    [[nodiscard]] const QList<GlobalShortcut> &offered() const { return m_offered; } ///< Refused ones too.
    [[nodiscard]] const QList<GlobalShortcut> &registered() const { return m_registered; }
    [[nodiscard]] int installations() const { return m_installations; }

private:
    [[nodiscard]] uint32_t idOf(uint32_t keyCode) const
    {
        const auto found =
            std::find_if(m_registered.begin(), m_registered.end(),
                         [keyCode](const GlobalShortcut &shortcut) { return shortcut.keyCode == keyCode; });
        return found == m_registered.end() ? 0 : found->id;
    }

    EventHandler m_handler;
    int m_installations = 0;
    QList<uint32_t> m_held;
    QList<uint32_t> m_refused;
    QList<GlobalShortcut> m_offered;
    QList<GlobalShortcut> m_registered;
};

} // namespace wrenfold
