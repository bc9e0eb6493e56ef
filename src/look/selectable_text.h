// SPDX-License-Identifier: MIT
#pragma once

#include "look/keyboard_focus.h"
#include "look/theme.h"

#include <QTextEdit>

namespace wrenfold {

/// A text of any length, shown exactly as it is, broken into lines where it has to be. It can be selected with the
/// pointer and copied, by its menu or by keyboard: without a selection all of it. The whole text is the accessible name.
/// It never scrolls by itself: give it the size of fittedTo().
class SelectableText : public QTextEdit
{
    Q_OBJECT

public:
    explicit SelectableText(QWidget *parent = nullptr);

    void setText(const QString &text);
    [[nodiscard]] const QString &text() const { return m_text; }

    /// Between the text and the edges; none at first.
    void setPadding(const QMargins &padding);
    /// The text's, and a selection's surface and text. Ink on nothing, and the accent's, at first.
    void setColors(Theme::Color ink, Theme::Color selection, Theme::Color selectedInk);

    /// Breaks the text into lines of at most `width` pixels; the size that it then has to be given.
    [[nodiscard]] QSize fittedTo(int width);

    void copyText(); ///< Of the selection, or all of it.

protected:
    bool event(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    [[nodiscard]] QMimeData *createMimeDataFromSelection() const override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    /// Whether to paint the focus ring now.
    [[nodiscard]] bool showsFocus() const { return hasFocus() && m_keyboardFocus.isShown(); }

private:
    void applyTheme();
    void applyPadding();

    QString m_text;
    QMargins m_padding;
    Theme::Color m_ink = &Theme::ink;
    Theme::Color m_selection = &Theme::accent;
    Theme::Color m_selectedInk = &Theme::onAccent;
    KeyboardFocus m_keyboardFocus;
};

} // namespace wrenfold
