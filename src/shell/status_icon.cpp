// SPDX-License-Identifier: MIT
#include "shell/status_icon.h"

#include "look/symbols.h"

#include <QGuiApplication>
#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

struct Drawing
{
    QString symbol;
    QString minutes; ///< Under the symbol; empty: the symbol alone.
    QColor color;
    qreal opacity = 1;
};

QImage paint(const Drawing &drawing, int side)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setOpacity(drawing.opacity);
    if (drawing.minutes.isEmpty()) {
        painter.drawPixmap(0, 0, Symbols::pixmap(drawing.symbol, drawing.color, side, 1));
        return image;
    }
    // The digits take what two of them need to be read at 16 pixels; the pin has the rest.
    const int digitHeight = side * 5 / 8;
    const int symbolSide = side * 7 / 16;
    painter.drawPixmap((side - symbolSide) / 2, 0,
                       Symbols::pixmap(drawing.symbol, drawing.color, symbolSide, 1));
    QFont font = QGuiApplication::font();
    font.setPixelSize(side * 3 / 4);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(drawing.color);
    painter.drawText(QRect(0, side - digitHeight, side, digitHeight), Qt::AlignCenter, drawing.minutes);
    return image;
}

QString word(StatusTint tint)
{
    switch (tint) {
    case StatusTint::Green:
        return QStringLiteral("green");
    case StatusTint::Orange:
        return QStringLiteral("orange");
    case StatusTint::Pink:
        return QStringLiteral("pink");
    case StatusTint::Label:
        break;
    }
    return QStringLiteral("label");
}

QString minutesLeft(const TimerState &timer)
{
    constexpr int secondsInAMinute = 60;
    constexpr qint64 mostThatFit = 99;
    return QString::number(
        std::min((timer.remainingSeconds + secondsInAMinute - 1) / secondsInAMinute, mostThatFit));
}

} // namespace

QColor statusColor(StatusTint tint)
{
    switch (tint) {
    case StatusTint::Green:
        return {0x2a, 0x9d, 0x5a};
    case StatusTint::Orange:
        return {0xd8, 0x7a, 0x10};
    case StatusTint::Pink:
        return {0xe5, 0x55, 0x8c};
    case StatusTint::Label:
        break;
    }
    return {0x86, 0x86, 0x86};
}

StatusIcon statusIcon(const StatusBarState &state, bool isLabelShown)
{
    const StatusTint tint = state.menubarTint();
    Drawing drawing{state.shouldShowMenubarTimer ? QStringLiteral("pin.fill")
                                                 : QStringLiteral("pin.circle.fill"),
                    {},
                    statusColor(tint)};
    QString name = QStringLiteral("wrenfold-") +
                   QString(drawing.symbol).replace(QLatin1Char('.'), QLatin1Char('-')) + QLatin1Char('-') +
                   word(tint);
    if (!isLabelShown && state.shouldShowMenubarTimer) {
        drawing.minutes = minutesLeft(state.timer);
        name += QLatin1Char('-') + drawing.minutes;
    }
    if (!isLabelShown && state.isGhostMode) {
        constexpr qreal pale = 0.5;
        drawing.opacity = pale;
        name += QStringLiteral("-ghost");
    }
    return {name, [drawing](int side) { return paint(drawing, side); }};
}

} // namespace wrenfold
