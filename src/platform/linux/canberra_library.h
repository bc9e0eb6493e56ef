// SPDX-License-Identifier: MIT
#pragma once

#include <canberra.h>

namespace wrenfold {

/// The calls of libcanberra that we use. The library is loaded for the first sound: with the six under it, it is a tenth of
/// all that a start would have to load and keep in memory, and many a day passes without a sound.
struct CanberraLibrary
{
    decltype(&ca_context_create) createContext = nullptr;
    decltype(&ca_context_destroy) destroyContext = nullptr;
    decltype(&ca_context_change_props) changeProperties = nullptr;
    decltype(&ca_context_play_full) playFull = nullptr;
    decltype(&ca_proplist_create) createProperties = nullptr;
    decltype(&ca_proplist_destroy) destroyProperties = nullptr;
    decltype(&ca_proplist_sets) setProperty = nullptr;

    /// Null where it is not installed. May be called on any thread; what it has loaded stays.
    [[nodiscard]] static const CanberraLibrary *loaded();
};

} // namespace wrenfold
