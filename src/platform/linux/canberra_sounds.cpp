// SPDX-License-Identifier: MIT
#include "platform/linux/canberra_sounds.h"

#include <alsa/asoundlib.h>
#include <canberra.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace wrenfold {

using namespace std::chrono_literals;

struct CanberraSounds::Queue
{
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Sound> waiting;
    bool isEnding = false;
    bool hasEnded = false;
};

namespace {

/// For the library under libcanberra, which else writes many lines to standard error where there is no device.
void keepQuiet(const char * /*file*/, int /*line*/, const char * /*function*/, int /*error*/,
               const char * /*format*/, ...)
{
}

/// A way to the audio server. What fails leaves silence.
class Context
{
public:
    Context() = default;
    ~Context() { close(); }
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;

    void play(const char *eventName)
    {
        if (!m_context && !open())
            return;
        const int error =
            ca_context_play(m_context, 0, CA_PROP_EVENT_ID, eventName, CA_PROP_MEDIA_ROLE, "event", nullptr);
        if (error != CA_SUCCESS)
            close(); // A device may be there the next time.
    }

private:
    bool open()
    {
        if (ca_context_create(&m_context) != CA_SUCCESS) {
            m_context = nullptr;
            return false;
        }
        ca_context_change_props(m_context, CA_PROP_APPLICATION_NAME, "Wren Fold", CA_PROP_APPLICATION_ID,
                                "dev.tolvane.Wrenfold", nullptr);
        return true;
    }

    void close()
    {
        if (m_context)
            ca_context_destroy(m_context);
        m_context = nullptr;
    }

    ca_context *m_context = nullptr;
};

} // namespace

CanberraSounds::CanberraSounds()
    : m_queue(std::make_shared<Queue>())
{
    snd_lib_error_set_handler(keepQuiet);
}

CanberraSounds::~CanberraSounds()
{
    if (!m_thread.joinable())
        return;
    std::unique_lock lock(m_queue->mutex);
    m_queue->isEnding = true;
    m_queue->changed.notify_all();
    const bool hasEnded = m_queue->changed.wait_for(lock, 400ms, [this] { return m_queue->hasEnded; });
    lock.unlock();
    // A thread that waits for an audio server cannot be called back. Left behind, it owns all that it uses.
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
}

void CanberraSounds::play(Sound sound)
{
    constexpr std::size_t mostWaiting = 3;
    if (!m_thread.joinable())
        m_thread = std::thread([queue = m_queue] { playAll(*queue); });
    const std::scoped_lock lock(m_queue->mutex);
    if (m_queue->waiting.size() >= mostWaiting)
        return;
    m_queue->waiting.push_back(sound);
    m_queue->changed.notify_all();
}

void CanberraSounds::playAll(Queue &queue)
{
    {
        Context context;
        std::unique_lock lock(queue.mutex);
        while (true) {
            queue.changed.wait(lock, [&] { return queue.isEnding || !queue.waiting.empty(); });
            if (queue.waiting.empty())
                break;
            const Sound sound = queue.waiting.front();
            queue.waiting.pop_front();
            lock.unlock();
            context.play(eventName(sound));
            lock.lock();
        }
        lock.unlock(); // Closing the context may take as long as anything here.
    }
    const std::scoped_lock lock(queue.mutex);
    queue.hasEnded = true;
    queue.changed.notify_all();
}

const char *CanberraSounds::eventName(Sound sound)
{
    static constexpr std::array names = {"bell", "complete", "dialog-warning", "message-new-instant"};
    return names[std::size_t(sound)];
}

} // namespace wrenfold
