// SPDX-License-Identifier: MIT
#include "look/tab_order.h"

#include <QWidget>

namespace wrenfold {

bool focusNextInTabOrder(const QWidget &list, bool next,
                         const std::function<bool(const QWidget &)> &isPassedOver)
{
    const auto step = [next](const QWidget *from) {
        return next ? from->nextInFocusChain() : from->previousInFocusChain();
    };
    for (QWidget *widget = step(&list); widget != &list; widget = step(widget)) {
        const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() &&
                              widget->isEnabled() && widget->window() == list.window();
        if (!takesTab || (isPassedOver && isPassedOver(*widget)))
            continue;
        widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}

} // namespace wrenfold
