// SPDX-License-Identifier: MIT
#include "look/busy_indicator.h"
#include "look/theme.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

/// One that counts how often it is painted.
class CountingIndicator : public BusyIndicator
{
public:
    using BusyIndicator::BusyIndicator;
    int paintings = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paintings;
        BusyIndicator::paintEvent(event);
    }
};

/// How often it is painted while nothing happens for as long as three of its steps take.
int paintingsAtRest(CountingIndicator &indicator)
{
    const int before = indicator.paintings;
    // The absence of something cannot be waited for in another way.
    (void)QTest::qWaitFor([&] { return indicator.paintings > before; }, 1000);
    return indicator.paintings - before;
}

} // namespace

class BusyIndicatorTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Durations::setMotionReduced(false); }

    void itMovesWhileItIsSeen()
    {
        CountingIndicator indicator;
        indicator.show();
        QTRY_VERIFY(indicator.paintings >= 3);
    }

    void itRestsWhileItIsHiddenAndGoesOnAfterwards()
    {
        CountingIndicator indicator;
        indicator.show();
        QTRY_VERIFY(indicator.paintings >= 2);
        indicator.hide();
        QCOMPARE(paintingsAtRest(indicator), 0);
        indicator.show();
        const int before = indicator.paintings;
        QTRY_VERIFY(indicator.paintings >= before + 3);
    }

    void itDoesNotMoveForWhoAsksForLessMotion()
    {
        Durations::setMotionReduced(true);
        CountingIndicator indicator;
        indicator.show();
        QTRY_VERIFY(indicator.paintings >= 1);
        QTRY_VERIFY(indicator.isVisible());
        QCOMPARE(paintingsAtRest(indicator), 0);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::BusyIndicatorTest)
#include "busy_indicator_test.moc"
