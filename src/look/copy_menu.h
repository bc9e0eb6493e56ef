// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>

#include <functional>

class QWidget;

namespace wrenfold {

struct CopyMenuActions
{
    std::function<void()> copy; ///< What is selected, or everything.
    std::function<void()> selectAll;
};

/// Opens the menu of a text that can be copied but not changed, at a point of the screen. Qt's own speaks the toolkit's
/// language.
void openCopyMenu(QWidget &text, const QPoint &position, const CopyMenuActions &actions);

} // namespace wrenfold
