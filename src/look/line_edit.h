// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QTimer>

#include <optional>

namespace wrenfold {

/// A line to type in, with the frame and the colours of the user's style. Undo and redo act on its text only while it
/// holds typing that is not yet committed; otherwise they are left to the window's shortcuts.
class LineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit LineEdit(QWidget *parent = nullptr);
    ~LineEdit() override;

    /// Shows a text that is kept elsewhere already, such as the title to be edited, or nothing after a
    /// submission.
    void setCommittedText(const QString &text);
    /// Declares the present text as kept elsewhere.
    void commit();
    /// Whether an input method is composing. Return and Escape are its own then, and do nothing else.
    [[nodiscard]] bool isComposing() const { return m_isComposing; }
    /// Whether the text differs from the committed one, or an input method is composing.
    [[nodiscard]] bool hasUncommittedText() const;

    /// Opens the context menu at a point of the screen.
    void openMenu(const QPoint &position);

    /// How long after the last key the caret goes on blinking. A caret at rest stays visible and wakes
    /// nobody.
    void setCaretRest(std::chrono::milliseconds delay);

protected:
    bool event(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void undoTyping();
    void restCaret();
    void wakeCaret();

    QString m_committedText;
    bool m_isComposing = false;
    QTimer m_caretTimer;
    std::optional<int> m_flashTime; ///< The application's, while the caret rests.
};

} // namespace wrenfold
