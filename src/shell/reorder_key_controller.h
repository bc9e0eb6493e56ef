// SPDX-License-Identifier: MIT
#pragma once

namespace wrenfold {

class FocusStore;
class ModifierKeys;

/// Keeps the store's isReorderKeyPressed as the Control key is, so that the panel offers to drag its rows.
class ReorderKeyController
{
public:
    /// Both must outlive the controller.
    ReorderKeyController(FocusStore &store, ModifierKeys &keys);
    ~ReorderKeyController();
    ReorderKeyController(const ReorderKeyController &) = delete;
    ReorderKeyController &operator=(const ReorderKeyController &) = delete;

    void install(); ///< From here on the flag follows the key.

private:
    FocusStore &m_store;
    ModifierKeys &m_keys;
};

} // namespace wrenfold
