// SPDX-License-Identifier: MIT
#include "shell/status_icon.h"
#include "support/contrast.h"
#include "support/test_case.h"

#include <QSet>

namespace wrenfold {

namespace {

StatusBarState running(qint64 remainingSeconds)
{
    StatusBarState state;
    state.timer.isRunning = true;
    state.timer.remainingSeconds = remainingSeconds;
    state.shouldShowMenubarTimer = true;
    return state;
}

StatusBarState inGhostMode()
{
    StatusBarState state;
    state.isGhostMode = true;
    return state;
}

QString nameOf(const StatusBarState &state, bool isLabelShown = false)
{
    return statusIcon(state, isLabelShown).name;
}

QImage painted(const StatusBarState &state, int side = 22, bool isLabelShown = false)
{
    return statusIcon(state, isLabelShown).paint(side);
}

int inkedPixels(const QImage &image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y).alpha() > 127 ? 1 : 0;
    }
    return count;
}

} // namespace

class StatusIconTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyColorIsSeenOnLightAndDarkStatusAreas()
    {
        for (const StatusTint tint :
             {StatusTint::Label, StatusTint::Green, StatusTint::Orange, StatusTint::Pink}) {
            for (const QColor &area : {QColor(Qt::white), QColor(Qt::black), QColor(0x33, 0x33, 0x33)})
                QVERIFY(contrast(statusColor(tint), area) >= 3.0);
        }
    }

    void statesThatLookDifferentHaveDifferentNames()
    {
        StatusBarState paused = running(1499);
        paused.timer.isRunning = false;
        StatusBarState breaking = running(299);
        breaking.timer.phase = PomodoroPhase::shortBreak;
        const QSet<QString> names{
            nameOf({}),           nameOf(running(1499)), nameOf(running(1439)), nameOf(paused),
            nameOf(running(299)), nameOf(running(59)),   nameOf(inGhostMode()), nameOf(running(1499), true)};
        QCOMPARE(names.size(), 8);
        QCOMPARE(nameOf(breaking), nameOf(running(299))); // Both five minutes, in orange.
    }

    void theSecondsDoNotMakeANewIcon()
    {
        QCOMPARE(nameOf(running(1499)), nameOf(running(1441)));
        QCOMPARE(nameOf(running(1499), true), nameOf(running(301), true));
    }

    void minutesThatHaveBegunAreLeft()
    {
        QVERIFY(nameOf(running(1500)).endsWith(QStringLiteral("-25")));
        QVERIFY(nameOf(running(1441)).endsWith(QStringLiteral("-25")));
        QVERIFY(nameOf(running(1440)).endsWith(QStringLiteral("-24")));
        QVERIFY(nameOf(running(1)).endsWith(QStringLiteral("-1")));
        QVERIFY(nameOf(running(0)).endsWith(QStringLiteral("-0")));
    }

    void besideALabelTheIconSaysNeitherMinutesNorGhost()
    {
        QCOMPARE(nameOf(inGhostMode(), true), nameOf({}, true));
        QVERIFY(nameOf(running(1499), true).endsWith(QStringLiteral("-green")));
    }

    void aNameIsFitForAFile()
    {
        const QRegularExpression fit(QStringLiteral("^[a-z0-9-]+$"));
        QVERIFY(fit.match(nameOf(running(1499))).hasMatch());
        QVERIFY(fit.match(nameOf(inGhostMode())).hasMatch());
    }

    void itIsDrawnInItsColorAtEverySize()
    {
        for (const int side : {16, 22, 24, 32, 48}) {
            for (const StatusBarState &state : {StatusBarState(), running(1499), running(59)}) {
                const QImage image = painted(state, side);
                QCOMPARE(image.size(), QSize(side, side));
                QVERIFY(inkedPixels(image) > side * side / 10);
                QVERIFY(image.pixelColor(0, 0).alpha() < 128); // A corner is free.
            }
        }
        const QImage image = painted({}, 48);
        QCOMPARE(image.pixelColor(5, 24).rgb(), statusColor(StatusTint::Label).rgb());
    }

    void otherMinutesAreAnotherDrawing()
    {
        QVERIFY(painted(running(1499)) != painted(running(1439)));
        QVERIFY(painted(running(1499)) == painted(running(1498)));
    }

    void inGhostModeThePinIsPale()
    {
        QVERIFY(painted(inGhostMode(), 48).pixelColor(5, 24).alpha() < 140);
        QCOMPARE(painted(inGhostMode(), 48, true).pixelColor(5, 24).alpha(), 255);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::StatusIconTest)
#include "status_icon_test.moc"
