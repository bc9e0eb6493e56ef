// SPDX-License-Identifier: MIT
#pragma once

#include "platform/single_instance.h"

namespace wrenfold {

/// For a run that may stand beside others: it claims nothing and answers nobody.
class NoSingleInstance : public SingleInstance
{
public:
    [[nodiscard]] Claim claim() override { return Claim::Unguarded; }
    [[nodiscard]] std::optional<QString> ask(Request /*request*/) override { return std::nullopt; }
    void listen(std::function<QString(Request request)> /*answer*/) override {}
};

} // namespace wrenfold
