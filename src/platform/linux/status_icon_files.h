// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status_item.h"

#include <QTemporaryDir>

#include <memory>

namespace wrenfold {

/// Icons as files, for the hosts that take no other. They lie in a folder of the session's that only the user can look
/// into, and go with this object.
class StatusIconFiles
{
public:
    /// The absolute path of the icon's file, which is written when an icon of this name comes for the first time; empty
    /// if there is no place for it.
    [[nodiscard]] QString path(const StatusIcon &icon);

private:
    bool makeFolder();

    std::unique_ptr<QTemporaryDir> m_folder;
    bool m_hasFailed = false; ///< Said once, and not tried again.
};

} // namespace wrenfold
