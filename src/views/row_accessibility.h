// SPDX-License-Identifier: MIT
#pragma once

namespace wrenfold {

/// Tells assistive technology that the panel's list is a list, its rows are the items, and which of them are
/// folded. Called by their constructors; does its work once.
void installRowAccessibility();

} // namespace wrenfold
