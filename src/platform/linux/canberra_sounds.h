// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/canberra_library.h"
#include "platform/sounds.h"

#include <memory>
#include <thread>

namespace wrenfold {

/// Sounds of the desktop's sound theme, through libcanberra. It may wait long for an audio server that does not
/// answer, so it has a thread of its own, which begins with the first sound and sleeps while there is none to play.
class CanberraSounds : public Sounds
{
public:
    /// Asks for the library on its own thread, when there is a sound to play.
    using Load = const CanberraLibrary *();

    explicit CanberraSounds(Load *load = CanberraLibrary::loaded);
    /// Returns within half a second, whatever the audio server does. Sounds that still play are cut off.
    ~CanberraSounds() override;

    /// Sounds that pile up behind an audio server that hangs are left out.
    void play(Sound sound) override;

    /// The sound's name in the sound naming specification.
    [[nodiscard]] static const char *eventName(Sound sound);

private:
    struct Queue;
    static void playAll(Queue &queue, const CanberraLibrary *canberra);

    Load *const m_load;
    std::shared_ptr<Queue> m_queue; ///< The thread's too, which may outlive this object.
    std::thread m_thread;
};

} // namespace wrenfold
