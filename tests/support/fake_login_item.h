// SPDX-License-Identifier: MIT
#pragma once

#include "platform/login_item.h"

#include <utility>

namespace wrenfold {

/// A login item in memory. Below the interface is what a test steers and looks at.
class FakeLoginItem final : public LoginItem
{
public:
    [[nodiscard]] LoginItemStatus status() const override { return m_status; }
    [[nodiscard]] Error registerProgram() override { return change(LoginItemStatus::Enabled); }
    [[nodiscard]] Error unregisterProgram() override { return change(LoginItemStatus::NotRegistered); }

    void setStatus(LoginItemStatus status) { m_status = status; }
    /// From now on nothing can be changed, for this reason; an empty one ends it.
    void refuse(Error reason) { m_refusal = std::move(reason); }
    /// How often it was registered or unregistered, or this was tried.
    [[nodiscard]] int changeCount() const { return m_changeCount; }

private:
    Error change(LoginItemStatus status)
    {
        ++m_changeCount;
        if (!m_refusal)
            m_status = status;
        return m_refusal;
    }

    LoginItemStatus m_status = LoginItemStatus::NotRegistered;
    Error m_refusal;
    int m_changeCount = 0;
};

} // namespace wrenfold
