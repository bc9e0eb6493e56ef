// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace wrenfold {

/// The user's preferences: one value of bytes under each key. Keys are file-name safe (letters, digits, dots).
/// Used on the main thread; every call returns only when its work is done.
class Preferences
{
public:
    virtual ~Preferences() = default;

    enum class ReadStatus { Found, Absent, Unreadable };

    struct ReadResult
    {
        ReadStatus status = ReadStatus::Absent;
        QByteArray bytes; ///< Empty unless found.
    };

    /// Unreadable means that something is stored but cannot be had now; whoever writes the key next would lose it,
    /// so keep it aside first.
    [[nodiscard]] virtual ReadResult read(const QString &key) const = 0;

    /// Replaces the value as a whole: whatever happens meanwhile, the key holds the old or the new value.
    /// No error means that the new value is on disk and stays there when the power fails; otherwise the text of what
    /// went wrong is returned.
    [[nodiscard]] virtual std::optional<QString> write(const QString &key, const QByteArray &bytes) = 0;

    /// Moves the present value out of the way under a dated name beside it, whether it can be read or not; the key
    /// is absent afterwards. A key that is absent already is no error.
    [[nodiscard]] virtual std::optional<QString> keepAside(const QString &key) = 0;
};

} // namespace wrenfold
