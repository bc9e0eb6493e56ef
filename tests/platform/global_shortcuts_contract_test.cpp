// SPDX-License-Identifier: MIT
#include "platform/linux/x11_global_shortcuts.h"
#include "support/fake_global_shortcuts.h"
#include "support/test_case.h"
#include "support/x11_program.h"

#include <QProcess>

namespace wrenfold {
namespace {

/// Global shortcuts, and what a test does around them.
struct Subject
{
    virtual ~Subject() = default;
    virtual GlobalShortcuts &shortcuts() = 0;
    virtual void press(int keyCode) = 0;
    /// As another program does it.
    virtual void hold(int keyCode) = 0;
};

struct FakeSubject : Subject
{
    FakeGlobalShortcuts fake;

    GlobalShortcuts &shortcuts() override { return fake; }
    void press(int keyCode) override { fake.press(static_cast<uint32_t>(keyCode)); }
    void hold(int keyCode) override { fake.hold(static_cast<uint32_t>(keyCode)); }
};

struct X11Subject : Subject
{
    X11Program other{"Other"};
    X11GlobalShortcuts real;

    GlobalShortcuts &shortcuts() override { return real; }
    void press(int keyCode) override
    {
        const QString keys = QStringLiteral("ctrl+alt+super+") + letterOf(static_cast<uint32_t>(keyCode));
        QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), keys}), 0);
    }
    void hold(int keyCode) override
    {
        const xcb_keycode_t key = keyCode == VirtualKey::P ? 33 : keyCode == VirtualKey::H ? 43 : 28;
        QVERIFY(other.grabKey(key, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4));
    }
};

GlobalShortcut shortcut(uint32_t id, int keyCode)
{
    return {1, id, static_cast<uint32_t>(keyCode), 6400, QStringLiteral("A shortcut")};
}

} // namespace

/// One suite over the fake and the real global shortcuts of X11.
class GlobalShortcutsContractTest : public TestCase
{
    Q_OBJECT

private:
    [[nodiscard]] std::unique_ptr<Subject> makeSubject()
    {
        QFETCH_GLOBAL(bool, isReal);
        m_pressed.clear();
        std::unique_ptr<Subject> subject;
        if (isReal)
            subject = std::make_unique<X11Subject>();
        else
            subject = std::make_unique<FakeSubject>();
        subject->shortcuts().installEventHandler(
            {.pressed = [this](uint32_t id) { m_pressed << id; }, .refused = [](uint32_t) {}});
        return subject;
    }

    QList<uint32_t> m_pressed;

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("isReal");
        QTest::newRow("fake") << false;
        QTest::newRow("real") << true;
    }

    void theHandlerIsThereOnceItIsInstalled()
    {
        QVERIFY(!FakeSubject().shortcuts().hasEventHandler());
        QVERIFY(!X11Subject().shortcuts().hasEventHandler());
        QVERIFY(makeSubject()->shortcuts().hasEventHandler());
    }

    void pressesAreToldByTheirID()
    {
        const auto subject = makeSubject();
        QVERIFY(subject->shortcuts().registerShortcut(shortcut(5, VirtualKey::P)));
        QVERIFY(subject->shortcuts().registerShortcut(shortcut(6, VirtualKey::T)));
        QCOMPARE(subject->shortcuts().availability(), Availability());
        subject->press(VirtualKey::T);
        subject->press(VirtualKey::H);
        subject->press(VirtualKey::P);
        QTRY_COMPARE(m_pressed, (QList<uint32_t>{6, 5}));
    }

    void aKeyThatIsHeldIsRefusedAlone()
    {
        const auto subject = makeSubject();
        subject->hold(VirtualKey::H);
        QVERIFY(subject->shortcuts().registerShortcut(shortcut(1, VirtualKey::P)));
        QVERIFY(!subject->shortcuts().registerShortcut(shortcut(2, VirtualKey::H)));
        QVERIFY(subject->shortcuts().registerShortcut(shortcut(3, VirtualKey::T)));
        QCOMPARE(subject->shortcuts().availability().level, Availability::Level::Limited);
        QVERIFY(!subject->shortcuts().availability().reason.isEmpty());
        subject->press(VirtualKey::H);
        subject->press(VirtualKey::T);
        subject->press(VirtualKey::P);
        QTRY_COMPARE(m_pressed, (QList<uint32_t>{3, 1}));
    }

    void anUnregisteredKeyIsNotToldAndCanBeRegisteredAgain()
    {
        const auto subject = makeSubject();
        QVERIFY(subject->shortcuts().registerShortcut(shortcut(1, VirtualKey::P)));
        QVERIFY(subject->shortcuts().registerShortcut(shortcut(2, VirtualKey::H)));
        subject->shortcuts().unregisterShortcut(1);
        subject->shortcuts().unregisterShortcut(1);
        subject->press(VirtualKey::P);
        subject->press(VirtualKey::H);
        QTRY_COMPARE(m_pressed, (QList<uint32_t>{2}));
        QVERIFY(subject->shortcuts().registerShortcut(shortcut(4, VirtualKey::P)));
        subject->press(VirtualKey::P);
        QTRY_COMPARE(m_pressed, (QList<uint32_t>{2, 4}));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::GlobalShortcutsContractTest)
#include "global_shortcuts_contract_test.moc"
