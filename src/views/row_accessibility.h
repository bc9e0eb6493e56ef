// SPDX-License-Identifier: MIT
#pragma once

namespace wrenfold {

/// Tells assistive technology that the panel's list is a list, its rows are the items, and which of them are
/// folded; and what has the focus while it is in neither a row nor a control. Called by the constructors of list and
/// rows; does its work once.
void installRowAccessibility();

} // namespace wrenfold
