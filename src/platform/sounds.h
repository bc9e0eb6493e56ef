// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace wrenfold {

/// The short sounds of the program: a nudge, the end of a phase, a warning, and a notification's own.
enum class Sound : std::uint8_t { Tink, Glass, Funk, Notification };

/// Plays the desktop's short sounds. Where there is no audio device, no such sound or no library for it, nothing is
/// heard and nothing fails.
class Sounds
{
public:
    virtual ~Sounds() = default;

    /// Returns at once; sounds may overlap.
    virtual void play(Sound sound) = 0;
};

} // namespace wrenfold
