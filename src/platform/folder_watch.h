// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace wrenfold {

/// Tells when other programs put files into a folder, change them or take them away.
class FolderWatch
{
public:
    struct Actions
    {
        /// A file was written, renamed into or out of the folder, or removed.
        std::function<void()> changed;
        /// The folder has gone or was moved, or the one above it was; nothing is watched any more.
        std::function<void()> lost;
    };

    virtual ~FolderWatch() = default;

    /// Watches this folder, and no other any more. The actions are called on the main thread; each may start anew.
    /// False: the folder cannot be watched, now nothing is.
    [[nodiscard]] virtual bool start(const QString &folder, const Actions &actions) = 0;

    /// Nothing is watched any more.
    virtual void stop() = 0;
};

} // namespace wrenfold
