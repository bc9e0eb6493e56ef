// SPDX-License-Identifier: MIT
#pragma once

#include "platform/login_item.h"

namespace wrenfold {

/// The login item as an autostart entry: a desktop entry in the folder "autostart" of the user's configuration or,
/// where the user has none, of the system's. The desktop's settings switch it off by a key in it.
class XdgAutostartLoginItem : public LoginItem
{
public:
    /// `program` is the absolute path of what is to be started.
    explicit XdgAutostartLoginItem(QString program);

    [[nodiscard]] LoginItemStatus status() const override;
    [[nodiscard]] Error registerProgram() override;

    /// Where the system has an entry, the user's own entry stays and hides it.
    [[nodiscard]] Error unregisterProgram() override;

private:
    const QString m_program;
};

} // namespace wrenfold
