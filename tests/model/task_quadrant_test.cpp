// SPDX-License-Identifier: MIT
#include "model/task_quadrant.h"

#include "support/test_case.h"

namespace wrenfold {

class TaskQuadrantTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theQuadrantsStandInTheirFixedOrder()
    {
        QCOMPARE(allQuadrants.size(), 4U);
        QCOMPARE(allQuadrants[0], TaskQuadrant::urgentImportant);
        QCOMPARE(allQuadrants[1], TaskQuadrant::importantNotUrgent);
        QCOMPARE(allQuadrants[2], TaskQuadrant::urgentNotImportant);
        QCOMPARE(allQuadrants[3], TaskQuadrant::notUrgentNotImportant);
    }

    void rawValuesAndLabelsAreTheFixedOnes_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("raw");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0 << QStringLiteral("urgentImportant") << QStringLiteral("緊急 × 重要");
        QTest::newRow("1") << 1 << QStringLiteral("importantNotUrgent")
                           << QStringLiteral("重要 × 緊急ではない");
        QTest::newRow("2") << 2 << QStringLiteral("urgentNotImportant")
                           << QStringLiteral("緊急 × 重要ではない");
        QTest::newRow("3") << 3 << QStringLiteral("notUrgentNotImportant")
                           << QStringLiteral("緊急でも重要でもない");
    }

    void rawValuesAndLabelsAreTheFixedOnes()
    {
        QFETCH(int, index);
        QFETCH(QString, raw);
        QFETCH(QString, text);
        const TaskQuadrant quadrant = allQuadrants[std::size_t(index)];
        QCOMPARE(QString(rawValue(quadrant)), raw);
        QCOMPARE(label(quadrant), text);
        QCOMPARE(quadrantFromRawValue(raw), std::optional(quadrant));
    }

    void anyOtherTextIsNoQuadrant_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("a part") << QStringLiteral("urgent");
        QTest::newRow("other case") << QStringLiteral("UrgentImportant");
        QTest::newRow("blank behind") << QStringLiteral("urgentImportant ");
        QTest::newRow("more") << QStringLiteral("urgentImportants");
        QTest::newRow("label") << QStringLiteral("緊急 × 重要");
        QTest::newRow("number") << QStringLiteral("0");
    }

    void anyOtherTextIsNoQuadrant()
    {
        QFETCH(QString, text);
        QCOMPARE(quadrantFromRawValue(text), std::nullopt);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TaskQuadrantTest)
#include "task_quadrant_test.moc"
