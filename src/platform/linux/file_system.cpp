// SPDX-License-Identifier: MIT
#include "platform/linux/file_system.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wrenfold {

int FileSystem::open(const QByteArray &path, int flags, mode_t mode)
{
    return ::open(path.constData(), flags, mode);
}

ssize_t FileSystem::read(int file, char *bytes, size_t size)
{
    return ::read(file, bytes, size);
}

ssize_t FileSystem::write(int file, const char *bytes, size_t size)
{
    return ::write(file, bytes, size);
}

int FileSystem::fsync(int file)
{
    return ::fsync(file);
}

int FileSystem::close(int file)
{
    return ::close(file);
}

int FileSystem::rename(const QByteArray &from, const QByteArray &to)
{
    return ::rename(from.constData(), to.constData());
}

int FileSystem::unlink(const QByteArray &path)
{
    return ::unlink(path.constData());
}

int FileSystem::mkdir(const QByteArray &path, mode_t mode)
{
    return ::mkdir(path.constData(), mode);
}

int FileSystem::rmdir(const QByteArray &path)
{
    return ::rmdir(path.constData());
}

FileSystem &FileSystem::real()
{
    static FileSystem fileSystem;
    return fileSystem;
}

} // namespace wrenfold
