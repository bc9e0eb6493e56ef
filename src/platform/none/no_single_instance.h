// SPDX-License-Identifier: MIT
#pragma once

#include "platform/single_instance.h"

namespace wrenfold {

/// For a run that may stand beside others: it claims nothing and answers nobody.
class NoSingleInstance : public SingleInstance
{
public:
    [[nodiscard]] Claim claim() override { return Claim::Unguarded; }
    [[nodiscard]] bool showRunning() override { return false; }
    void listen(std::function<void()> /*showPanel*/) override {}
};

} // namespace wrenfold
