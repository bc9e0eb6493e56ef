// SPDX-License-Identifier: MIT
#pragma once

#include "look/keyboard_focus.h"

#include <QAbstractButton>

namespace wrenfold {

/// Base of the buttons that we paint. Space and Return act; the focus comes by Tab only, so that a click
/// leaves it in the field where the user types, and is shown as a ring. The second half of a double click acts on the
/// button that had the first one only: what comes under the pointer meanwhile was not meant.
class PaintedButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit PaintedButton(QWidget *parent = nullptr);

    /// What the button does, in plain text: its tool tip. An ampersand is an ampersand. toolTip() stays
    /// empty.
    void setHelp(const QString &help);
    [[nodiscard]] QString help() const { return m_help; }

protected:
    /// Called when the help has changed. By default it is the accessible name too.
    virtual void helpChanged();

    /// Whether to paint the focus ring now.
    [[nodiscard]] bool showsFocus() const;
    /// Whether the button is enabled and the pointer is over it.
    [[nodiscard]] bool isHovered() const;

    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    QString m_help;
    KeyboardFocus m_keyboardFocus;
};

} // namespace wrenfold
