// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QWidget;

namespace wrenfold {

/// Hands the focus to the widget that the Tab key leads to from `list`, or from there back, but to none for which
/// `isPassedOver`. For a list that makes its widgets when they come into sight: in the toolkit's chain they stand in the
/// order in which they happened to be made. Whether there was such a widget.
bool focusNextInTabOrder(const QWidget &list, bool next,
                         const std::function<bool(const QWidget &)> &isPassedOver = {});

} // namespace wrenfold
