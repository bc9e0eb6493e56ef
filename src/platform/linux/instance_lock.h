// SPDX-License-Identifier: MIT
#pragma once

#include "platform/single_instance.h"

#include <QString>

namespace wrenfold {

/// The lock that one program holds on its preferences folder. It is on the folder itself, so it leaves no
/// file and works where nothing can be written; the kernel drops it when the process ends, however it ends.
class InstanceLock
{
public:
    explicit InstanceLock(QString folder);
    ~InstanceLock();
    Q_DISABLE_COPY_MOVE(InstanceLock)

    /// Makes the folder (mode 0700) if it is missing, and locks it until this object goes.
    [[nodiscard]] SingleInstance::Claim take();

    [[nodiscard]] bool isHeld() const { return m_descriptor >= 0; }

private:
    const QString m_folder;
    int m_descriptor = -1;
};

} // namespace wrenfold
