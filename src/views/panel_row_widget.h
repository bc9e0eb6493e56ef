// SPDX-License-Identifier: MIT
#pragma once

#include "look/keyboard_focus.h"
#include "views/panel_rows.h"

#include <QWidget>

#include <functional>
#include <initializer_list>

namespace wrenfold {

class CheckCircle;
class IconButton;

/// Base of the widgets that show one row of the panel's list. A widget is handed another row of its kind when
/// the list scrolls or changes.
///
/// It paints the row's background (hovered, active, focused by keyboard) where the row takes the focus; what
/// Space, Return, Delete and the like do there is the subclass's.
class PanelRowWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PanelRowWidget(QWidget *parent);

    [[nodiscard]] const PanelRow &row() const { return m_row; }
    void setRow(const PanelRow &row);

    /// Whether the row has the focus and it came by keyboard.
    [[nodiscard]] bool showsFocusRing() const { return hasFocus() && m_keyboardFocus.isShown(); }

protected:
    /// The row was replaced; `previous` is what was shown before.
    virtual void rowChanged(const PanelRow &previous) = 0;
    /// The pointer entered or left, or the keyboard focus came or went.
    virtual void engagementChanged() {}

    /// A key of the row's own was pressed while the row shows the focus, without modifiers and not by being held down.
    /// False leaves it to the list.
    virtual bool actOnKey(int key) = 0;

    /// Pointed at or focused by keyboard: then the row's actions are shown.
    [[nodiscard]] bool isEngaged() const { return m_isHovered || showsFocusRing(); }

    // Neither is a stop of the Tab key: inside a row the arrow keys and the row's own keys do what these do.
    /// Calls `toggle` when the circle is clicked; the circle goes on showing what the row says.
    CheckCircle *addCheck(const QString &help, std::function<void()> toggle);
    IconButton *addButton(const QString &symbol, const QString &help, const std::function<void()> &action);

    /// Puts a circle of checkSize, as large as can be hit, at `left` in the row's middle; the place behind it
    /// is returned.
    int placeCheck(QWidget *check, int left);
    /// Puts the visible ones of the buttons (null: not made yet) at the row's right end, the first outermost;
    /// their left edge is returned.
    int placeTrailing(std::initializer_list<QWidget *> buttons);

    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    PanelRow m_row;
    bool m_isHovered = false;
    KeyboardFocus m_keyboardFocus;
};

} // namespace wrenfold
