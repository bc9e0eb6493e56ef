// SPDX-License-Identifier: MIT
#include "platform/linux/inotify_folder_watch.h"

#include "platform/linux/file_system.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <sys/inotify.h>
#include <unistd.h>

namespace wrenfold {

InotifyFolderWatch::~InotifyFolderWatch()
{
    InotifyFolderWatch::stop();
}

bool InotifyFolderWatch::start(const QString &folder, const Actions &actions)
{
    stop();
    m_actions = actions;
    m_queue = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_queue < 0)
        return false;
    // Made: a second name for a file that was written elsewhere brings no other event. Attributes: the time counts.
    constexpr uint32_t fileEvents =
        IN_CREATE | IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE;
    constexpr uint32_t folderEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    const auto watch = [this](const QString &path, uint32_t events) {
        return inotify_add_watch(m_queue, QFile::encodeName(path).constData(), events) >= 0;
    };
    // The folder above too: moved with that one, a folder does not hear of it.
    if (!watch(folder, fileEvents | folderEvents) || !watch(QFileInfo(folder).path(), folderEvents)) {
        stop();
        return false;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_queue, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { readEvents(); });
    return true;
}

void InotifyFolderWatch::stop()
{
    // It may be in the middle of telling of what made us stop.
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater();
    }
    if (m_queue >= 0)
        ::close(m_queue);
    m_queue = -1;
}

void InotifyFolderWatch::readEvents()
{
    alignas(inotify_event) std::array<char, 64 * 1024> buffer;
    bool isChanged = false;
    bool isLost = false;
    ssize_t size = 0;
    while ((size = uninterrupted([&] { return ::read(m_queue, buffer.data(), buffer.size()); })) > 0) {
        for (ssize_t at = 0; at < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer.data() + at);
            const bool isOfFolder =
                (event->mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED)) != 0;
            isLost = isLost || isOfFolder;
            isChanged = isChanged || !isOfFolder; // Also when so much happened that the system lost count.
            at += ssize_t(sizeof(inotify_event)) + event->len;
        }
    }
    const Actions actions = m_actions; // Either may start anew.
    if (isLost)
        stop();
    if (isChanged)
        actions.changed();
    if (isLost)
        actions.lost();
}

} // namespace wrenfold
