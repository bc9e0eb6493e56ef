// SPDX-License-Identifier: MIT
#include "platform/linux/atomic_file.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace wrenfold {

namespace {

constexpr mode_t privateFolder = 0700;
constexpr mode_t groupAndOthers = 0077;

/// To be called right after the failure, while errno holds its reason.
QString failure(QLatin1String action, const QString &path)
{
    const QString reason = QString::fromStdString(std::generic_category().message(errno));
    return QStringLiteral("cannot %1 %2: %3").arg(action, path, reason);
}

/// A file or folder held open.
class Descriptor
{
public:
    Descriptor(FileSystem &fileSystem, const QString &path, int flags, mode_t mode = 0)
        : m_fileSystem(fileSystem)
        , m_file(uninterrupted(
              [&] { return fileSystem.open(QFile::encodeName(path), flags | O_CLOEXEC, mode); }))
    {
    }

    ~Descriptor()
    {
        if (isOpen())
            m_fileSystem.close(m_file);
    }

    Q_DISABLE_COPY_MOVE(Descriptor)

    [[nodiscard]] bool isOpen() const { return m_file != -1; }
    [[nodiscard]] int number() const { return m_file; }

    [[nodiscard]] bool flush()
    {
        return uninterrupted([this] { return m_fileSystem.fsync(m_file); }) == 0;
    }

    /// An interrupted close has closed the file all the same; to repeat it could hit another file.
    [[nodiscard]] bool close()
    {
        return m_fileSystem.close(std::exchange(m_file, -1)) == 0 || errno == EINTR;
    }

    [[nodiscard]] bool write(const QByteArray &bytes)
    {
        for (qsizetype done = 0; done < bytes.size();) {
            const ssize_t count = uninterrupted([&] {
                return m_fileSystem.write(m_file, bytes.constData() + done, size_t(bytes.size() - done));
            });
            // Else a file system that takes nothing and names no reason would hold us for ever.
            if (count == 0)
                errno = EIO;
            if (count <= 0)
                return false;
            done += count;
        }
        return true;
    }

    /// Reads to the end; `expectedSize` spares it from growing the buffer.
    [[nodiscard]] std::optional<QByteArray> readAll(qsizetype expectedSize)
    {
        QByteArray bytes(expectedSize + 1, Qt::Uninitialized);
        qsizetype done = 0;
        for (;;) {
            const ssize_t count = uninterrupted(
                [&] { return m_fileSystem.read(m_file, bytes.data() + done, size_t(bytes.size() - done)); });
            if (count == -1)
                return std::nullopt;
            if (count == 0)
                break;
            done += count;
            if (done == bytes.size())
                bytes.resize(2 * done);
        }
        bytes.resize(done);
        return bytes;
    }

private:
    FileSystem &m_fileSystem;
    int m_file;
};

QString folderOf(const QString &path)
{
    return QFileInfo(path).path();
}

QString temporaryFor(const QString &path)
{
    return QStringLiteral("%1/.%2.tmp").arg(folderOf(path), QFileInfo(path).fileName());
}

/// A leftover is unlinked rather than truncated: it may be a link or a pipe, or have another mode.
std::optional<QString> writeNewFile(FileSystem &fileSystem, const QString &path, const QByteArray &bytes,
                                    mode_t mode)
{
    if (fileSystem.unlink(QFile::encodeName(path)) != 0 && errno != ENOENT)
        return failure(QLatin1String("remove"), path);
    Descriptor file(fileSystem, path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
    if (!file.isOpen())
        return failure(QLatin1String("create"), path);
    if (!file.write(bytes))
        return failure(QLatin1String("write"), path);
    if (!file.flush())
        return failure(QLatin1String("flush"), path);
    if (!file.close())
        return failure(QLatin1String("close"), path);
    return std::nullopt;
}

std::optional<QString> flushFolder(Descriptor &folder, const QString &path)
{
    if (!folder.flush())
        return failure(QLatin1String("flush"), path);
    if (!folder.close())
        return failure(QLatin1String("close"), path);
    return std::nullopt;
}

std::optional<QString> makeFolder(FileSystem &fileSystem, const QString &path)
{
    const QString parent = folderOf(path);
    if (fileSystem.mkdir(QFile::encodeName(path), privateFolder) != 0) {
        if (errno != ENOENT)
            return failure(QLatin1String("make"), path);
        if (auto error = makeFolder(fileSystem, parent))
            return error;
        if (fileSystem.mkdir(QFile::encodeName(path), privateFolder) != 0)
            return failure(QLatin1String("make"), path);
    }
    Descriptor above(fileSystem, parent, O_RDONLY | O_DIRECTORY);
    auto error = above.isOpen() ? flushFolder(above, parent) : failure(QLatin1String("open"), parent);
    if (error)
        fileSystem.rmdir(QFile::encodeName(path)); // So that the next try makes it, and flushes it, anew.
    return error;
}

} // namespace

std::optional<QString> replaceFile(FileSystem &fileSystem, const QString &path, const QByteArray &bytes,
                                   mode_t mode)
{
    const QString temporary = temporaryFor(path);
    auto error = writeNewFile(fileSystem, temporary, bytes, mode);
    if (!error)
        error = moveFile(fileSystem, temporary, path);
    if (error)
        fileSystem.unlink(QFile::encodeName(temporary));
    return error;
}

std::optional<QString> moveFile(FileSystem &fileSystem, const QString &from, const QString &to)
{
    const QString path = folderOf(to);
    Descriptor folder(fileSystem, path, O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen())
        return failure(QLatin1String("open"), path);
    if (fileSystem.rename(QFile::encodeName(from), QFile::encodeName(to)) != 0)
        return failure(QLatin1String("replace"), to);
    return flushFolder(folder, path);
}

std::optional<QString> makePrivateFolder(FileSystem &fileSystem, const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0)
        return makeFolder(fileSystem, path);
    // Where this fails (another owner, a file system without modes) the mode of the files themselves still
    // protects.
    if (S_ISDIR(status.st_mode) && (status.st_mode & groupAndOthers) != 0)
        ::chmod(name.constData(), status.st_mode & ~(S_IFMT | groupAndOthers));
    return std::nullopt;
}

Preferences::ReadResult readFile(FileSystem &fileSystem, const QString &path)
{
    using Status = Preferences::ReadStatus;
    // Without O_NONBLOCK opening a named pipe would wait for its other end.
    Descriptor file(fileSystem, path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file.isOpen())
        return {isNothingAt(path) ? Status::Absent : Status::Unreadable, {}};
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return {Status::Unreadable, {}};
    const std::optional<QByteArray> bytes = file.readAll(qsizetype(status.st_size));
    if (!bytes)
        return {Status::Unreadable, {}};
    return {Status::Found, *bytes};
}

bool isNothingAt(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) != 0 && errno == ENOENT;
}

bool isSomethingAt(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0;
}

} // namespace wrenfold
