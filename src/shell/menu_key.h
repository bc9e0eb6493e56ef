// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace wrenfold {

/// Lets Shift+F10 open the menu of what has the keyboard, in every window of the program, as the Menu key does: many a
/// keyboard has none.
class MenuKey : public QObject
{
    Q_OBJECT

public:
    MenuKey(); ///< Needs the application object.

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace wrenfold
