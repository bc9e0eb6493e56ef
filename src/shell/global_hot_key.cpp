// SPDX-License-Identifier: MIT
#include "shell/global_hot_key.h"

#include <QCoreApplication>

#include <limits>
#include <map>
#include <utility>

namespace wrenfold {
namespace {

uint32_t nextID = 1;
std::map<uint32_t, std::function<void()>> handlers; ///< Of every live hot key, by its id.

void runHandler(uint32_t id)
{
    const auto found = handlers.find(id);
    if (found == handlers.end())
        return;
    const std::function<void()> action = found->second; // It may destroy its hot key.
    action();
}

/// Deferred, so that whatever the desktop's message interrupted has been done before the action runs.
void hotKeyEventHandler(uint32_t id)
{
    const auto run = [id] { runHandler(id); };
    QMetaObject::invokeMethod(qApp, run, Qt::QueuedConnection);
}

uint32_t toUnsigned(int value)
{
    if (value < 0)
        qFatal("A hot key has the negative key code or modifiers %d.", value);
    return static_cast<uint32_t>(value);
}

} // namespace

std::unique_ptr<GlobalHotKey> GlobalHotKey::create(GlobalShortcuts &shortcuts, int keyCode, int modifiers,
                                                   const QString &description, std::function<void()> action)
{
    const uint32_t id = std::exchange(nextID, idAfter(nextID));
    handlers.emplace(id, std::move(action));
    if (!shortcuts.hasEventHandler())
        shortcuts.installEventHandler(
            {.pressed = hotKeyEventHandler, .refused = [](uint32_t refused) { handlers.erase(refused); }});
    if (!shortcuts.registerShortcut(
            {signature, id, toUnsigned(keyCode), toUnsigned(modifiers), description})) {
        handlers.erase(id);
        return nullptr;
    }
    return std::unique_ptr<GlobalHotKey>(new GlobalHotKey(shortcuts, id));
}

GlobalHotKey::GlobalHotKey(GlobalShortcuts &shortcuts, uint32_t id)
    : m_shortcuts(shortcuts)
    , m_id(id)
{
}

GlobalHotKey::~GlobalHotKey()
{
    m_shortcuts.unregisterShortcut(m_id);
    handlers.erase(m_id);
}

uint32_t GlobalHotKey::idAfter(uint32_t id)
{
    if (id == std::numeric_limits<uint32_t>::max())
        qFatal("No number is left for a hot key.");
    return id + 1;
}

} // namespace wrenfold
