// SPDX-License-Identifier: MIT
#include "model/timestamp.h"

#include "support/test_case.h"

#include <QTimeZone>

namespace wrenfold {

class TimestampTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theCountBeginsWithTheYear2001InUtc()
    {
        const QDateTime start(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
        QCOMPARE(Timestamp::fromDateTime(start).secondsSince2001, 0.0);
        QCOMPARE(Timestamp::fromDateTime(start.addMSecs(1500)).secondsSince2001, 1.5);
        QCOMPARE(Timestamp::fromDateTime(start.addMSecs(-250)).secondsSince2001, -0.25);
    }

    void theTimeZoneOfAMomentDoesNotMatter()
    {
        const QDateTime inTokyo(QDate(2001, 1, 1), QTime(9, 0), QTimeZone("Asia/Tokyo"));
        QCOMPARE(Timestamp::fromDateTime(inTokyo).secondsSince2001, 0.0);
    }

    void aSystemMomentIsCountedFrom1970()
    {
        QCOMPARE(Timestamp::fromSecondsSince1970(978307200.0).secondsSince2001, 0.0);
        QCOMPARE(Timestamp::fromSecondsSince1970(0).secondsSince2001, -978307200.0);
    }

    void momentsCompareByTheirInstant()
    {
        QVERIFY(Timestamp{1} == Timestamp{1});
        QVERIFY(Timestamp{1} < Timestamp{1.0000001});
        QVERIFY(Timestamp{0.0} == Timestamp{-0.0});
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TimestampTest)
#include "timestamp_test.moc"
