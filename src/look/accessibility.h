// SPDX-License-Identifier: MIT
#pragma once

namespace wrenfold {

/// Tells assistive technology what our painted widgets are: a TextLabel is a text, or a button when it can be
/// clicked; a CountBadge is a text; a CheckCircle is a check box, and toggling it clicks it. Called by their
/// constructors; does its work once.
void installAccessibility();

} // namespace wrenfold
