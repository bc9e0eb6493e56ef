// SPDX-License-Identifier: MIT
#pragma once

#include "platform/sounds.h"

namespace wrenfold {

/// For a run that is to be silent.
class NoSounds : public Sounds
{
public:
    void play(Sound /*sound*/) override {}
};

} // namespace wrenfold
