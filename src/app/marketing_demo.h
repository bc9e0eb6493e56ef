// SPDX-License-Identifier: MIT
#pragma once

namespace wrenfold {

class FocusStore;

/// Fills an empty store with the sample tasks of the demonstration.
void seedMarketingDemo(FocusStore &store, bool isBoardVisible);

} // namespace wrenfold
