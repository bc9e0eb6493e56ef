// SPDX-License-Identifier: MIT
#include "shell/hot_keys.h"

#include <utility>

namespace wrenfold {

std::vector<std::unique_ptr<GlobalHotKey>> registerHotKeys(GlobalShortcuts &shortcuts,
                                                           const HotKeyActions &actions)
{
    std::vector<std::unique_ptr<GlobalHotKey>> hotKeys;
    const auto add = [&](int keyCode, const QString &description, const std::function<void()> &action) {
        constexpr int modifiers = HotKeyModifier::control | HotKeyModifier::option | HotKeyModifier::command;
        if (std::unique_ptr<GlobalHotKey> hotKey =
                GlobalHotKey::create(shortcuts, keyCode, modifiers, description, action))
            hotKeys.push_back(std::move(hotKey));
    };
    add(VirtualKey::P, QStringLiteral("パネルの表示を切り替える"), actions.togglePanel);
    add(VirtualKey::H, QStringLiteral("パネルを隠す"), actions.hidePanel);
    add(VirtualKey::T, QStringLiteral("新規TODOを追加"), actions.newTodo);
    return hotKeys;
}

} // namespace wrenfold
