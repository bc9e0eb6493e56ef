// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace wrenfold {

/// A tick and a number on a green pill. Read out as its help and the number.
class CountBadge : public QWidget
{
    Q_OBJECT

public:
    explicit CountBadge(const QString &help, QWidget *parent = nullptr);

    /// What is counted, in plain text: the tool tip.
    void setHelp(const QString &help);
    void setCount(int count);
    [[nodiscard]] int count() const { return m_count; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void updateName();

    QString m_help;
    int m_count = 0;
};

} // namespace wrenfold
