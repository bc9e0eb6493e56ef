// SPDX-License-Identifier: MIT
#include "support/faulty_file_system.h"

#include <algorithm>
#include <csignal>

namespace wrenfold {

void FaultyFileSystem::fail(Call kind, int n, int error, int times)
{
    State &told = m_states.at(size_t(kind));
    told.callsUntilFault = n;
    told.faultsLeft = times;
    told.error = error;
    told.failures = 0;
}

bool FaultyFileSystem::fails(Call kind)
{
    if (m_callsToLive > 0 && --m_callsToLive == 0)
        ::raise(SIGKILL);
    State &told = m_states.at(size_t(kind));
    ++told.calls;
    m_order.append(kind);
    if (told.callsUntilFault > 1) {
        --told.callsUntilFault;
        return false;
    }
    if (told.faultsLeft == 0)
        return false;
    --told.faultsLeft;
    ++told.failures;
    errno = told.error;
    return true;
}

int FaultyFileSystem::open(const QByteArray &path, int flags, mode_t mode)
{
    return fails(Call::Open) ? -1 : FileSystem::open(path, flags, mode);
}

ssize_t FaultyFileSystem::read(int file, char *bytes, size_t size)
{
    return fails(Call::Read) ? -1 : FileSystem::read(file, bytes, std::min(size, m_transferLimit));
}

ssize_t FaultyFileSystem::write(int file, const char *bytes, size_t size)
{
    return fails(Call::Write) ? -1 : FileSystem::write(file, bytes, std::min(size, m_transferLimit));
}

int FaultyFileSystem::fsync(int file)
{
    return fails(Call::Fsync) ? -1 : FileSystem::fsync(file);
}

int FaultyFileSystem::close(int file)
{
    const bool isToFail = fails(Call::Close);
    const int error = errno;
    const int result = FileSystem::close(file);
    if (!isToFail)
        return result;
    errno = error;
    return -1;
}

int FaultyFileSystem::rename(const QByteArray &from, const QByteArray &to)
{
    return fails(Call::Rename) ? -1 : FileSystem::rename(from, to);
}

int FaultyFileSystem::unlink(const QByteArray &path)
{
    return fails(Call::Unlink) ? -1 : FileSystem::unlink(path);
}

int FaultyFileSystem::mkdir(const QByteArray &path, mode_t mode)
{
    return fails(Call::Mkdir) ? -1 : FileSystem::mkdir(path, mode);
}

} // namespace wrenfold
