// SPDX-License-Identifier: MIT
#pragma once

#include "platform/availability.h"

#include <QStringList>

#include <cstdint>
#include <functional>

namespace wrenfold {

/// The keys that can be registered, by the codes that stand for these letters' places on an ANSI keyboard. Here the
/// letter counts, wherever the user's layout has it.
namespace VirtualKey {
inline constexpr int P = 35;
inline constexpr int H = 4;
inline constexpr int T = 17;
} // namespace VirtualKey

/// What is held with the key, as bits to add up.
namespace HotKeyModifier {
inline constexpr int control = 4096;
inline constexpr int option = 2048; ///< Alt.
inline constexpr int command = 256; ///< Super.
} // namespace HotKeyModifier

/// A key combination that reaches the program whichever window has the keyboard.
struct GlobalShortcut
{
    int32_t signature = 0; ///< Four ASCII characters, the first in the highest byte: whose shortcut it is.
    /// The same at each start of the program: with the signature it is what a desktop remembers the user's choice by.
    uint32_t id = 0;
    uint32_t keyCode = 0;   ///< One of VirtualKey.
    uint32_t modifiers = 0; ///< Of HotKeyModifier.
    QString description;    ///< For the user, where the desktop lists shortcuts; plain text.
};

/// The lower-case letter of a VirtualKey; null for another code.
[[nodiscard]] QChar letterOf(uint32_t keyCode);
/// As people write it: Ctrl+Alt+Super+P.
[[nodiscard]] QString nameOf(const GlobalShortcut &shortcut);

/// What the user can do where presses do not arrive: the end of a line.
[[nodiscard]] QString globalShortcutsRemedy();
/// What a service says of itself: the names of the shortcuts that it was refused, and whether it has others.
[[nodiscard]] Availability availabilityWithout(const QStringList &refused, bool hasOthers);

/// The desktop's service for global shortcuts. Everything is called on the main thread, and calls back on it; nothing
/// here waits for the user.
class GlobalShortcuts
{
public:
    virtual ~GlobalShortcuts() = default;

    struct EventHandler
    {
        std::function<void(uint32_t id)> pressed; ///< Once for each press, however long the keys are held.
        /// The desktop said no to what registerShortcut() had accepted, or took it back: no press will come. Never
        /// called inside registerShortcut().
        std::function<void(uint32_t id)> refused;
    };

    /// Of the shortcuts registered by now. Works only if presses arrive as things stand; limited if some shortcuts were
    /// refused. The reason says what to do instead.
    [[nodiscard]] virtual Availability availability() const = 0;

    /// Whether registering a shortcut may bring up a question to the user.
    [[nodiscard]] virtual bool asksUser() const = 0;

    /// There is one handler; it stays.
    virtual void installEventHandler(const EventHandler &handler) = 0;
    [[nodiscard]] virtual bool hasEventHandler() const = 0;

    /// Whether the desktop took it; where the desktop answers later, whether it was passed on. The id must not be
    /// registered already.
    [[nodiscard]] virtual bool registerShortcut(const GlobalShortcut &shortcut) = 0;
    virtual void unregisterShortcut(uint32_t id) = 0; ///< Nothing happens if it is not registered.
};

} // namespace wrenfold
