// SPDX-License-Identifier: MIT
#include "platform/regular_file.h"

#include "platform/linux/file_system.h"

#include <QFile>

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace wrenfold {
namespace {

class OpenFile
{
public:
    OpenFile(const QByteArray &path, int flags)
        : m_number(uninterrupted([&] { return ::open(path.constData(), flags); }))
    {
    }
    ~OpenFile()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    [[nodiscard]] int number() const { return m_number; }

private:
    const int m_number;
};

QDateTime modificationTime(const struct stat &status)
{
    const qint64 milliseconds = status.st_mtim.tv_sec * qint64(1000) + status.st_mtim.tv_nsec / 1'000'000;
    return QDateTime::fromMSecsSinceEpoch(milliseconds).toUTC();
}

/// All of it, or nothing if there are more than `limit` bytes.
std::optional<QByteArray> readAll(int file, qint64 expected, qint64 limit)
{
    QByteArray bytes;
    qint64 size = 0;
    for (;;) {
        // One more than expected: the read that finds the end needs no larger buffer.
        bytes.resize(std::max(expected + 1, size + size / 2 + 1));
        const ssize_t count =
            uninterrupted([&] { return ::read(file, bytes.data() + size, size_t(bytes.size() - size)); });
        if (count < 0)
            return std::nullopt;
        size += count;
        if (count == 0)
            break;
        if (size > limit)
            return std::nullopt;
    }
    bytes.resize(size);
    return bytes;
}

} // namespace

std::optional<RegularFile> readRegularFile(const QString &path, qint64 limit, Links links)
{
    const QByteArray name = QFile::encodeName(path);
    // Looked at before it is opened: opening alone can rewind a tape, or let go somebody who waits at a pipe.
    struct stat status = {};
    if (::fstatat(AT_FDCWD, name.constData(), &status, links == Links::Refuse ? AT_SYMLINK_NOFOLLOW : 0) !=
            0 ||
        !S_ISREG(status.st_mode))
        return std::nullopt;
    const OpenFile file(name, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY |
                                  (links == Links::Refuse ? O_NOFOLLOW : 0));
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > limit)
        return std::nullopt;
    std::optional<QByteArray> bytes = readAll(file.number(), status.st_size, limit);
    if (!bytes)
        return std::nullopt;
    return RegularFile{*std::move(bytes), modificationTime(status)};
}

std::optional<QStringList> fileNames(const QString &folder)
{
    const auto close = [](DIR *open) { ::closedir(open); };
    const std::unique_ptr<DIR, decltype(close)> open(::opendir(QFile::encodeName(folder).constData()), close);
    if (!open)
        return std::nullopt;
    QStringList names;
    while (const dirent *entry = ::readdir(open.get())) {
        const QByteArray raw(entry->d_name);
        const QString name = QFile::decodeName(raw);
        if (raw != "." && raw != ".." && QFile::encodeName(name) == raw)
            names.append(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace wrenfold
