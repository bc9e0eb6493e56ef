// SPDX-License-Identifier: MIT
#pragma once

#include "look/painted_button.h"
#include "look/theme.h"

namespace wrenfold {

/// A symbol to press, without text. Its help is tool tip and accessible name.
class IconButton : public PaintedButton
{
    Q_OBJECT

public:
    IconButton(const QString &symbol, const QString &help, QWidget *parent = nullptr);

    /// One of the names that Symbols knows.
    void setSymbol(const QString &symbol);
    [[nodiscard]] QString symbol() const { return m_symbol; }

    /// Secondary ink at first.
    void setTint(Theme::Color tint);

    /// Shows the thing that the button stands for as switched on: accent on its soft surface, whatever the
    /// tint.
    void setOn(bool isOn);
    [[nodiscard]] bool isOn() const { return m_isOn; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    Theme::Color m_tint = &Theme::secondaryInk;
    bool m_isOn = false;
};

} // namespace wrenfold
