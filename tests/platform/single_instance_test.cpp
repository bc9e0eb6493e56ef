// SPDX-License-Identifier: MIT
#include "platform/instance_test_case.h"
#include "platform/linux/linux_single_instance.h"
#include "platform/none/no_single_instance.h"
#include "support/fake_single_instance.h"
#include "support/files.h"
#include "support/test_mount.h"

namespace wrenfold {

using Claim = SingleInstance::Claim;

/// One way of making the first instance, and of starting the program once more beside it.
struct Maker
{
    std::function<std::unique_ptr<SingleInstance>()> make;
    std::function<bool(SingleInstance &)> startAgain;
};

class SingleInstanceTest : public InstanceTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        makePlace();
    }
    void cleanup() { leavePlace(); }

    // What holds for the real one and the fake

    void theFirstIsToldOfEachFurtherStart_data()
    {
        QTest::addColumn<Maker>("maker");
        QTest::newRow("fake") << Maker{
            [] { return std::make_unique<FakeSingleInstance>(); },
            [](SingleInstance &first) {
                return static_cast<FakeSingleInstance &>(first).startAgain().has_value();
            }};
        QTest::newRow("Linux") << Maker{[this] { return std::make_unique<LinuxSingleInstance>(folder()); },
                                        [this](SingleInstance &) { return startBesideThisProcess(); }};
    }

    void theFirstIsToldOfEachFurtherStart()
    {
        QFETCH(Maker, maker);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeFolder()));
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        const std::unique_ptr<SingleInstance> first = maker.make();
        QCOMPARE(first->claim(), Claim::First);
        int asked = 0;
        first->listen([&asked](Request) {
            ++asked;
            return QString();
        });
        QCOMPARE(asked, 0);
        QVERIFY(maker.startAgain(*first));
        QCOMPARE(asked, 1);
        QVERIFY(maker.startAgain(*first));
        QCOMPARE(asked, 2);
    }

    void withoutSingleInstanceNothingIsClaimedAndNobodyAnswers()
    {
        NoSingleInstance instance;
        QCOMPARE(instance.claim(), Claim::Unguarded);
        QCOMPARE(instance.ask(Request::ShowPanel), std::nullopt);
    }

    // The claim

    void theFirstOfTwoProcessesIsFirstAndTheSecondFindsItTaken()
    {
        ProgramUnderTest first = start();
        ProgramUnderTest second = start();
        QCOMPARE(first.tell("claim"), "first");
        QCOMPARE(second.tell("claim"), "taken");
        QCOMPARE(second.tell("claim"), "taken");
        QCOMPARE(first.tell("claim"), "first");
    }

    void aMissingFolderIsMadeForTheUserAloneAndHoldsNoFile()
    {
        LinuxSingleInstance instance(folder());
        QCOMPARE(instance.claim(), Claim::First);
        QCOMPARE(modeOf(folder()), mode_t(0700));
        QCOMPARE(namesIn(folder()), QStringList());
    }

    void killingTheFirstFreesTheClaim()
    {
        ProgramUnderTest first = start();
        QCOMPARE(first.tell("claim"), "first");
        first.signal(SIGKILL);
        QCOMPARE(first.waitForEnd(), -1);
        QCOMPARE(start().tell("claim"), "first");
    }

    void aChildOfAKilledFirstDoesNotKeepTheClaim()
    {
        ProgramUnderTest first = start();
        QCOMPARE(first.tell("claim"), "first");
        const pid_t child = first.tell("start a child").toInt();
        QVERIFY(child > 0);
        first.signal(SIGKILL);
        QCOMPARE(first.waitForEnd(), -1);
        QCOMPARE(::kill(child, 0), 0);
        const QByteArray claim = start().tell("claim");
        ::kill(child, SIGKILL);
        QCOMPARE(claim, "first");
    }

    void aReadOnlyFolderIsGuardedAsWell()
    {
        QVERIFY(QDir().mkpath(folder()));
        TestMount mount(folder());
        QCOMPARE(mount.mountReadOnly(), QString());
        QVERIFY(!QFile(folder() + QStringLiteral("/probe")).open(QIODevice::WriteOnly));
        ProgramUnderTest first = start();
        ProgramUnderTest second = start();
        QCOMPARE(first.tell("claim"), "first");
        QCOMPARE(second.tell("claim"), "taken");
    }

    void aFolderThatCannotBeMadeLeavesTheProgramUnguarded()
    {
        putFile(m_place->filePath(QStringLiteral("file")), "");
        LinuxSingleInstance belowFile(m_place->filePath(QStringLiteral("file/folder")));
        QCOMPARE(belowFile.claim(), Claim::Unguarded);
        LinuxSingleInstance atFile(m_place->filePath(QStringLiteral("file")));
        QCOMPARE(atFile.claim(), Claim::Unguarded);
    }

private:
    /// Starts another process beside this one, whose event loop has to run for it to be answered.
    bool startBesideThisProcess() const
    {
        ProgramUnderTest second = start();
        second.say("show");
        return QTest::qWaitFor([&second] { return second.hasAnswered(); }, 10000) &&
               second.nextLine() == "answered";
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::SingleInstanceTest)
#include "single_instance_test.moc"
