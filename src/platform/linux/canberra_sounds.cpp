// SPDX-License-Identifier: MIT
#include "platform/linux/canberra_sounds.h"

#include "app/application_id.h"

#include <dlfcn.h>
#include <link.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace wrenfold {

using namespace std::chrono_literals;

struct CanberraSounds::Queue
{
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Sound> waiting;
    int playing = 0;
    bool isEnding = false;
    bool hasEnded = false;
};

namespace {

/// libcanberra unloads its driver with the context, though a thread of the driver's may just be leaving it: the one of a
/// sound that has said that it ended. So a driver that was loaded once stays.
void keepDriversLoaded()
{
    std::vector<std::string> drivers; // Loading something while the list is walked could wait for itself.
    const auto note = [](dl_phdr_info *library, size_t, void *names) {
        const std::string name(library->dlpi_name);
        if (name.find("/libcanberra-") != std::string::npos)
            static_cast<std::vector<std::string> *>(names)->push_back(name);
        return 0;
    };
    dl_iterate_phdr(note, &drivers);
    for (const std::string &driver : drivers)
        dlopen(driver.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

/// A way to the audio server, open from a sound on until it is closed or a sound fails. What fails leaves silence.
class Context
{
public:
    /// `soundEnded` is called on any thread, once for each sound that began to play.
    Context(const CanberraLibrary *canberra, std::function<void()> soundEnded)
        : m_canberra(canberra)
        , m_soundEnded(std::move(soundEnded))
    {
    }
    ~Context() { close(); }
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;

    [[nodiscard]] bool isOpen() const { return m_context; }

    void play(const char *eventName)
    {
        if (!m_context && !open())
            return;
        ca_proplist *properties = nullptr;
        int error = m_canberra->createProperties(&properties);
        if (error == CA_SUCCESS) {
            m_canberra->setProperty(properties, CA_PROP_EVENT_ID, eventName);
            m_canberra->setProperty(properties, CA_PROP_MEDIA_ROLE, "event");
            error = m_canberra->playFull(m_context, 0, properties, finish, this);
            keepDriversLoaded();
            m_canberra->destroyProperties(properties);
        }
        if (error != CA_SUCCESS)
            close(); // A device may be there the next time.
    }

    /// Cuts off what still plays; after it no sound ends.
    void close()
    {
        if (m_context)
            m_canberra->destroyContext(m_context);
        m_context = nullptr;
    }

private:
    static void finish(ca_context *, uint32_t, int, void *context)
    {
        static_cast<Context *>(context)->m_soundEnded();
    }

    bool open()
    {
        if (!m_canberra || m_canberra->createContext(&m_context) != CA_SUCCESS) {
            m_context = nullptr;
            return false;
        }
        m_canberra->changeProperties(m_context, CA_PROP_APPLICATION_NAME, "Wren Fold", CA_PROP_APPLICATION_ID,
                                     applicationIDLiteral, nullptr);
        return true;
    }

    const CanberraLibrary *const m_canberra; ///< Null: there are no sounds.
    std::function<void()> m_soundEnded;
    ca_context *m_context = nullptr;
};

} // namespace

CanberraSounds::CanberraSounds(Load *load)
    : m_load(load)
    , m_queue(std::make_shared<Queue>())
{
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
        m_thread = std::thread([queue = m_queue, load = m_load] { playAll(*queue, load()); });
    const std::scoped_lock lock(m_queue->mutex);
    if (m_queue->waiting.size() >= mostWaiting)
        return;
    m_queue->waiting.push_back(sound);
    m_queue->changed.notify_all();
}

void CanberraSounds::playAll(Queue &queue, const CanberraLibrary *canberra)
{
    {
        Context context(canberra, [&queue] {
            const std::scoped_lock lock(queue.mutex);
            --queue.playing;
            queue.changed.notify_all();
        });
        std::unique_lock lock(queue.mutex);
        while (true) {
            queue.changed.wait(lock, [&] {
                return queue.isEnding || !queue.waiting.empty() || (context.isOpen() && queue.playing <= 0);
            });
            if (!queue.waiting.empty()) {
                const Sound sound = queue.waiting.front();
                queue.waiting.pop_front();
                ++queue.playing;
                lock.unlock();
                context.play(eventName(sound));
                lock.lock();
            } else if (queue.isEnding) {
                break;
            } else {
                // Left open, it would wake this program at the sounds of all others.
                lock.unlock();
                context.close();
                lock.lock();
            }
            if (!context.isOpen())
                queue.playing = 0;
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
