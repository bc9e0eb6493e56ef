// SPDX-License-Identifier: MIT
#pragma once

#include "platform/login_item.h"

namespace wrenfold::LoginItemService {

/// Turns launching at login on or off and logs how it went. What went wrong is returned, in one line for the user.
[[nodiscard]] LoginItem::Error setEnabled(LoginItem &item, bool isEnabled);

/// The user's word for it.
[[nodiscard]] QString statusText(LoginItemStatus status);

} // namespace wrenfold::LoginItemService
