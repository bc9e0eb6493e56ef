// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace wrenfold {

class TextButton;
class TextField;

/// Where the user types a message. Return sends it, unless an input method is composing.
class ChatComposer : public QWidget
{
    Q_OBJECT

public:
    explicit ChatComposer(QWidget *parent = nullptr);

    [[nodiscard]] QString draft() const;
    void setDraft(const QString &draft);
    /// Whether a message can be sent now.
    void setSendEnabled(bool isEnabled);
    void focusInput();

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void submitted();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QRect fieldRect() const;

    TextField *m_field;
    TextButton *m_send;
};

} // namespace wrenfold
