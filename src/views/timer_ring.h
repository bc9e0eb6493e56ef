// SPDX-License-Identifier: MIT
#pragma once

#include "look/painted_button.h"
#include "look/theme.h"

namespace wrenfold {

/// The button that starts and stops the timer; the ring around its symbol is what remains of the phase.
class TimerRing : public PaintedButton
{
    Q_OBJECT

public:
    explicit TimerRing(QWidget *parent = nullptr);

    /// One of the names that Symbols knows.
    void setSymbol(const QString &symbol);
    [[nodiscard]] QString symbol() const { return m_symbol; }

    /// 0 to 1.
    void setFraction(qreal fraction);
    void setColor(Theme::Color color);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    qreal m_fraction = 1;
    Theme::Color m_color = &Theme::accent;
};

} // namespace wrenfold
