// SPDX-License-Identifier: MIT
#pragma once

#include "look/keyboard_focus.h"
#include "look/plain_text.h"
#include "look/theme.h"

#include <QWidget>

namespace wrenfold {

/// A text shown exactly as it is, in one line or a few, ending in an ellipsis where it does not fit; line
/// breaks are shown as spaces. The whole text is the accessible name and, when elided, the tool tip.
/// Its contents margins are kept free beside the text.
class TextLabel : public QWidget
{
    Q_OBJECT

public:
    explicit TextLabel(const QString &text = {}, QWidget *parent = nullptr);

    void setText(const QString &text);
    [[nodiscard]] QString text() const { return m_text; }

    /// Ink at first.
    void setColor(Theme::Color color);
    void setStruckOut(bool isStruckOut);
    /// Of each line; at first as its first letter has it. For a sentence of ours that quotes a text of the user's.
    void setTextDirection(Qt::LayoutDirection direction);
    /// One at first. The height follows the lines needed.
    void setMaximumLines(int lines);

    /// What a click does, in plain text: tool tip (below the text, when that is elided) and description.
    void setHelp(const QString &help);

    /// A clickable label takes the focus by Tab and acts on Space and Return.
    void setClickable(bool isClickable);
    [[nodiscard]] bool isClickable() const { return m_isClickable; }

    [[nodiscard]] bool isElided() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    /// A clickable label was clicked with the left button, by keyboard, or by assistive technology.
    void clicked();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    /// In a label of this width.
    [[nodiscard]] ElidedText shown(int width) const;
    [[nodiscard]] QString toolTipText() const;

    QString m_text;
    QString m_help;
    Theme::Color m_color = &Theme::ink;
    int m_maximumLines = 1;
    Qt::LayoutDirection m_textDirection = Qt::LayoutDirectionAuto;
    bool m_isStruckOut = false;
    bool m_isClickable = false;
    bool m_isPressed = false;
    KeyboardFocus m_keyboardFocus;
};

} // namespace wrenfold
