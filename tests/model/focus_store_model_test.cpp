// SPDX-License-Identifier: MIT
#include "model/store_machine.h"
#include "platform/linux/file_preferences.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

#include <QTemporaryDir>

namespace wrenfold {

/// Long random sequences of all the task operations, each checked after every operation. A failure names its
/// sequence; the same seed runs it again.
class FocusStoreModelTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theRulesHoldAfterEveryOperation_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= sequences; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void theRulesHoldAfterEveryOperation()
    {
        QFETCH(quint32, seed);
        StoreMachine machine(seed);
        const QTemporaryDir folder;
        FilePreferences preferences(folder.path() + QStringLiteral("/Wrenfold"), m_clock);
        for (int operation = 1; operation <= operationsOfSequence; ++operation) {
            const QString wrong = machine.step();
            QVERIFY2(
                wrong.isEmpty(),
                qPrintable(QStringLiteral("seed %1, operation %2: %3").arg(seed).arg(operation).arg(wrong)));
            const bool isWritten = machine.fakes().preferences.writeCount() > 0;
            if (isWritten && operation % 100 == 0)
                QCOMPARE(stateIn(machine.fakes().document()), machine.state());
            if (isWritten && operation % 1000 == 0)
                checkOnDisk(machine, preferences);
            if (QTest::currentTestFailed())
                return;
        }
    }

private:
    static constexpr quint32 sequences = 20;
    static constexpr int operationsOfSequence = 10'000;

    static TaskSnapshot stateIn(const QByteArray &document)
    {
        const SavedState state = decodeSavedState(document).value();
        return {state.tasks, state.activeTaskID};
    }

    /// Saves the state to the folder and finds it there again, also as a store that starts with it.
    void checkOnDisk(const StoreMachine &machine, FilePreferences &preferences)
    {
        QCOMPARE(preferences.write(FocusStore::storageKey(), machine.fakes().document()), std::nullopt);
        const Preferences::ReadResult read = preferences.read(FocusStore::storageKey());
        QCOMPARE(read.status, Preferences::ReadStatus::Found);
        QCOMPARE(stateIn(read.bytes), machine.state());
        QuietServices quiet;
        const FocusStore restarted(quiet.with(preferences, m_clock), {});
        QCOMPARE(restarted.tasks.value(), machine.state().tasks);
        QCOMPARE(restarted.activeTaskID.value(), machine.state().activeTaskID);
    }

    FakeClock m_clock;
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreModelTest)
#include "focus_store_model_test.moc"
