// SPDX-License-Identifier: MIT
#pragma once

#include "platform/modifier_keys.h"

#include <QObject>

namespace wrenfold {

/// The modifier keys as our own windows hear of them. With the keyboard elsewhere no key counts as held.
class OwnModifierKeys final : public QObject, public ModifierKeys
{
    Q_OBJECT

public:
    OwnModifierKeys();

    [[nodiscard]] Availability availability() const override;
    void watchControl(std::function<void(bool isDown)> changed) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setDown(bool isDown);

    std::function<void(bool)> m_changed;
    bool m_isDown = false;
};

} // namespace wrenfold
