// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/file_system.h"

#include <QList>

#include <array>
#include <cerrno>
#include <cstdint>

namespace wrenfold {

/// The real file system, in which single calls go wrong as told.
class FaultyFileSystem final : public FileSystem
{
public:
    enum class Call { Open, Read, Write, Fsync, Close, Rename, Unlink, Mkdir };

    /// From now on the `n`th call of this kind (1 is the next) fails with the given errno, and with it the
    /// following ones until `times` have failed. A close that fails has closed. Replaces what was told of
    /// this kind before.
    void fail(Call kind, int n, int error = EIO, int times = 1);

    /// How many of the calls told to fail have failed since fail() was last called for the kind.
    [[nodiscard]] int failures(Call kind) const { return state(kind).failures; }

    /// Calls of the kind until now, failed ones included.
    [[nodiscard]] int calls(Call kind) const { return state(kind).calls; }

    /// All calls until now in their order, failed ones included.
    [[nodiscard]] const QList<Call> &order() const { return m_order; }

    /// Writes and reads transfer at most this many bytes a call.
    void limitTransfers(size_t bytes) { m_transferLimit = bytes; }

    /// Kills the process instead of the `n`th call of whatever kind.
    void dieAt(int n) { m_callsToLive = n; }

    int open(const QByteArray &path, int flags, mode_t mode) override;
    ssize_t read(int file, char *bytes, size_t size) override;
    ssize_t write(int file, const char *bytes, size_t size) override;
    int fsync(int file) override;
    int close(int file) override;
    int rename(const QByteArray &from, const QByteArray &to) override;
    int unlink(const QByteArray &path) override;
    int mkdir(const QByteArray &path, mode_t mode) override;

private:
    struct State
    {
        int calls = 0;
        int callsUntilFault = 0; ///< 0: no fault to come.
        int faultsLeft = 0;
        int error = 0;
        int failures = 0;
    };

    [[nodiscard]] const State &state(Call kind) const { return m_states.at(size_t(kind)); }
    /// Counts a call; true, with errno set, when it is to fail.
    bool fails(Call kind);

    std::array<State, size_t(Call::Mkdir) + 1> m_states;
    QList<Call> m_order;
    size_t m_transferLimit = SIZE_MAX;
    int m_callsToLive = 0; ///< 0: for ever.
};

} // namespace wrenfold
