// SPDX-License-Identifier: MIT
#pragma once

#include "platform/single_instance.h"

#include <utility>

namespace wrenfold {

/// A claim in memory, of a program that is the first. Below the interface is what a test steers and looks at.
class FakeSingleInstance final : public SingleInstance
{
public:
    [[nodiscard]] Claim claim() override { return Claim::First; }
    [[nodiscard]] std::optional<QString> ask(Request /*request*/) override { return std::nullopt; }
    void listen(std::function<QString(Request request)> answer) override { m_answer = std::move(answer); }

    /// Does what another start does: asks for something. Nothing if nobody listens.
    std::optional<QString> startAgain(Request request = Request::ShowPanel)
    {
        return m_answer ? std::optional(m_answer(request)) : std::nullopt;
    }

private:
    std::function<QString(Request request)> m_answer;
};

} // namespace wrenfold
