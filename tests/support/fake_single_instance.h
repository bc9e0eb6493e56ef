// SPDX-License-Identifier: MIT
#pragma once

#include "platform/single_instance.h"

#include <utility>

namespace wrenfold {

/// A claim in memory. Below the interface is what a test steers and looks at.
class FakeSingleInstance final : public SingleInstance
{
public:
    [[nodiscard]] Claim claim() override { return m_claim; }
    [[nodiscard]] bool showRunning() override
    {
        ++m_showRunningCount;
        return m_runningAnswers;
    }
    void listen(std::function<void()> showPanel) override { m_showPanel = std::move(showPanel); }

    /// What the claim comes to; without this call the program is the first.
    void setClaim(Claim claim) { m_claim = claim; }
    /// Whether the running program answers; without this call it does not.
    void setRunningAnswers(bool answers) { m_runningAnswers = answers; }

    /// How often the running program was asked for its panel.
    [[nodiscard]] int showRunningCount() const { return m_showRunningCount; }

    /// Does what another start does: asks for the panel. False if nobody listens.
    bool startAgain()
    {
        if (!m_showPanel)
            return false;
        m_showPanel();
        return true;
    }

private:
    Claim m_claim = Claim::First;
    bool m_runningAnswers = false;
    int m_showRunningCount = 0;
    std::function<void()> m_showPanel;
};

} // namespace wrenfold
