// SPDX-License-Identifier: MIT
#pragma once

#include "look/painted_button.h"

namespace wrenfold {

/// The circle in front of a task; checked when the task is done. A click toggles it; whoever shows a state
/// that is kept elsewhere sets it again after clicked().
class CheckCircle : public PaintedButton
{
    Q_OBJECT

public:
    explicit CheckCircle(const QString &help, QWidget *parent = nullptr);

    /// Whether the open circle is the one of the task in hand.
    void setNow(bool isNow);
    [[nodiscard]] bool isNow() const { return m_isNow; }

    /// The circle's width, checkSize at first; what can be hit stays as large.
    void setCircleSize(int size);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_circleSize;
    bool m_isNow = false;
};

} // namespace wrenfold
