// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace wrenfold {

class TextField;

/// The field in which a new task is typed. Return submits.
class TodoComposer : public QWidget
{
    Q_OBJECT

public:
    explicit TodoComposer(QWidget *parent = nullptr);

    /// Gives the field the focus and its caret.
    void focusInput();

Q_SIGNALS:
    /// A draft was submitted; the field is empty again. `makeActive` when Control was held.
    void submitted(const QString &draft, bool makeActive);
    void focused(); ///< The field took the focus.

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void submit(bool makeActive);

    TextField *m_field;
};

} // namespace wrenfold
