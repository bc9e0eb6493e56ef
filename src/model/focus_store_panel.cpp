// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "model/focus_store.h"

namespace wrenfold {

void FocusStore::exitGhostMode()
{
    if (!isGhostMode.value())
        return;
    isGhostMode.set(false);
    qCInfo(DebugLog::ui) << "exited ghost mode";
}

} // namespace wrenfold
