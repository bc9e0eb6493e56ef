// SPDX-License-Identifier: MIT
#include "platform/termination_signals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace wrenfold {
namespace {

constexpr std::array signalNumbers = {SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t eventDescriptor = -1;

/// Runs in the midst of anything, so it does nothing but wake the event loop.
extern "C" void wakeEventLoop(int)
{
    const int savedError = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(eventDescriptor, &one, sizeof one);
    errno = savedError;
}

bool isIgnored(int number)
{
    struct sigaction present = {};
    return ::sigaction(number, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
}

void setHandler(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(number, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate)
    : m_terminate(std::move(terminate))
{
    eventDescriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (eventDescriptor < 0)
        return; // The signals then kill the program, as they would without us.
    m_notifier.emplace(static_cast<int>(eventDescriptor), QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier, [this] {
        std::uint64_t count = 0;
        if (::read(eventDescriptor, &count, sizeof count) == sizeof count)
            m_terminate();
    });
    for (const int number : signalNumbers) {
        if (number != SIGHUP || !isIgnored(SIGHUP))
            setHandler(number, wakeEventLoop);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (eventDescriptor < 0)
        return;
    for (const int number : signalNumbers) {
        if (!isIgnored(number))
            setHandler(number, SIG_DFL);
    }
    m_notifier.reset();
    ::close(eventDescriptor);
    eventDescriptor = -1;
}

} // namespace wrenfold
