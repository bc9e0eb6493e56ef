// SPDX-License-Identifier: MIT
#include "shell/reorder_key_controller.h"

#include "model/focus_store.h"
#include "platform/modifier_keys.h"

namespace wrenfold {

ReorderKeyController::ReorderKeyController(FocusStore &store, ModifierKeys &keys)
    : m_store(store)
    , m_keys(keys)
{
}

ReorderKeyController::~ReorderKeyController()
{
    m_keys.watchControl({});
}

void ReorderKeyController::install()
{
    m_keys.watchControl([this](bool isDown) { m_store.isReorderKeyPressed.set(isDown); });
}

} // namespace wrenfold
