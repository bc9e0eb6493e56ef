// SPDX-License-Identifier: MIT
#pragma once

#include "platform/sounds.h"

#include <QList>

#include <utility>

namespace wrenfold {

/// Sounds that a test counts.
class FakeSounds : public Sounds
{
public:
    void play(Sound sound) override { m_played.append(sound); }

    /// What was played since the last call.
    [[nodiscard]] QList<Sound> take() { return std::exchange(m_played, {}); }

private:
    QList<Sound> m_played;
};

} // namespace wrenfold
