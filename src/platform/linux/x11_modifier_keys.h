// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11_connection.h"
#include "platform/modifier_keys.h"

#include <QAbstractNativeEventFilter>

namespace wrenfold {

/// The modifier keys of an X11 session, whoever has the keyboard: the server tells all programs of them.
class X11ModifierKeys final : public ModifierKeys, public QAbstractNativeEventFilter
{
public:
    X11ModifierKeys();
    ~X11ModifierKeys() override;

    [[nodiscard]] Availability availability() const override;
    void watchControl(std::function<void(bool isDown)> changed) override;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    [[nodiscard]] bool askWhetherDown() const;

    X11Connection m_connection;
    uint8_t m_keyboardEvent = 0; ///< The type of the keyboard extension's events; zero without the extension.
    std::function<void(bool)> m_changed;
    bool m_isDown = false;
};

} // namespace wrenfold
