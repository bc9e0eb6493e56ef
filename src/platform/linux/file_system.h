// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cerrno>
#include <sys/types.h>

namespace wrenfold {

/// The system calls by which preferences are read and changed, named and behaving as in section 2 of the
/// manual: a failure is -1 with its reason in errno. Tests override single calls to let them fail.
class FileSystem
{
public:
    virtual ~FileSystem() = default;

    virtual int open(const QByteArray &path, int flags, mode_t mode);
    virtual ssize_t read(int file, char *bytes, size_t size);
    virtual ssize_t write(int file, const char *bytes, size_t size);
    virtual int fsync(int file);
    virtual int close(int file);
    virtual int rename(const QByteArray &from, const QByteArray &to);
    virtual int unlink(const QByteArray &path);
    virtual int mkdir(const QByteArray &path, mode_t mode);
    virtual int rmdir(const QByteArray &path);

    /// The one that makes the calls as they are. Has no state.
    static FileSystem &real();
};

/// Makes a system call again for as long as a signal interrupts it. Not for close(), which is final at once.
template<typename Call>
auto uninterrupted(const Call &call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

} // namespace wrenfold
