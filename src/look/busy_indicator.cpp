// SPDX-License-Identifier: MIT
#include "look/busy_indicator.h"

#include "look/theme.h"

#include <QPainter>
#include <QTimerEvent>

namespace wrenfold {

namespace {

constexpr int dotCount = 3;
constexpr int dotSize = 5;
constexpr int dotDistance = 9;
constexpr std::chrono::milliseconds stepTime{320};

} // namespace

BusyIndicator::BusyIndicator(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize BusyIndicator::sizeHint() const
{
    return {(dotCount - 1) * dotDistance + dotSize, dotSize};
}

void BusyIndicator::paintEvent(QPaintEvent *)
{
    const bool isMoving = Durations::motion().count() > 0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::current().accent);
    for (int dot = 0; dot < dotCount; ++dot) {
        painter.setOpacity(!isMoving || dot == m_step ? 1.0 : 0.35);
        painter.drawEllipse(QRectF(dot * dotDistance, (height() - dotSize) / 2.0, dotSize, dotSize));
    }
    // What is not painted is not seen, and its next step is not waited for.
    if (isMoving && !m_nextStep.isActive())
        m_nextStep.start(static_cast<int>(stepTime.count()), this);
}

void BusyIndicator::timerEvent(QTimerEvent *)
{
    m_nextStep.stop();
    m_step = (m_step + 1) % dotCount;
    update();
}

} // namespace wrenfold
