// SPDX-License-Identifier: MIT
#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace wrenfold {

/// Three dots that show that something is under way, one after the other coming forward. They move only while they are
/// in sight, and not at all when the user asks for less motion. Nothing to assistive technology: the text beside says
/// what runs.
class BusyIndicator : public QWidget
{
    Q_OBJECT

public:
    explicit BusyIndicator(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_nextStep;
    int m_step = 0;
};

} // namespace wrenfold
