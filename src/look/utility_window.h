// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace wrenfold {

/// About what window managers put around a window: so much less than the screen it may be at most.
inline constexpr QSize windowFrame(8, 32);

/// A window beside the panel, with a frame: made once, hidden when it is closed, also by Escape, and shown again where
/// it was.
class UtilityWindow : public QWidget
{
    Q_OBJECT

public:
    /// `size` is that of the content, in device-independent pixels.
    UtilityWindow(const QString &title, const QSize &size);

    /// Fills the window; takes ownership. To be called once.
    void setContent(QWidget *content);
    [[nodiscard]] QWidget *content() const { return m_content; }

    /// Comes to the front with the keyboard.
    void comeToFront();

Q_SIGNALS:
    /// There is a native window, which is in sight as soon as this returns.
    void aboutToComeToFront(QWindow *window);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *m_content = nullptr;
};

} // namespace wrenfold
