// SPDX-License-Identifier: MIT
#include "platform/linux/portal_appearance.h"
#include "support/bus_contract_test.h"
#include "support/fake_desktop_appearance.h"
#include "support/fake_portal.h"

namespace wrenfold {

namespace {

const Appearance none;
const Appearance dark{true, false, false};
const Appearance light{false, false, false};
const Appearance contrastedLight{false, true, false};
const Appearance still{std::nullopt, false, true};

/// A desktop's appearance, and how a test changes it.
struct Subject
{
    virtual ~Subject() = default;
    virtual DesktopAppearance &appearance() = 0;
    virtual void set(const Appearance &wanted) = 0;
};

struct FakeSubject : Subject
{
    FakeDesktopAppearance fake;

    DesktopAppearance &appearance() override { return fake; }
    void set(const Appearance &wanted) override { fake.set(wanted); }
};

struct RealSubject : Subject
{
    FakePortal portal;
    PortalAppearance real;

    explicit RealSubject(const QString &busAddress)
        : portal(busAddress)
    {
        if (!portal.arrive())
            qFatal("the portal does not come");
    }
    DesktopAppearance &appearance() override { return real; }
    void set(const Appearance &wanted) override
    {
        const uint colorScheme = !wanted.isDark ? 0 : *wanted.isDark ? 1 : 2;
        // What is not wanted any more first, as a desktop's user changes one after the other.
        const auto common = QStringLiteral("org.freedesktop.appearance");
        portal.set(common, QStringLiteral("color-scheme"), colorScheme);
        portal.set(common, QStringLiteral("contrast"), uint(wanted.isHighContrast));
        portal.set(common, QStringLiteral("reduced-motion"), uint(wanted.isMotionReduced));
    }
};

} // namespace

/// One suite over the fake and the real appearance.
class DesktopAppearanceContractTest : public BusContractTest
{
    Q_OBJECT

private:
    [[nodiscard]] std::unique_ptr<Subject> makeSubject() const
    {
        return makeOneOf<Subject, FakeSubject, RealSubject>();
    }

private Q_SLOTS:
    void whatIsSetIsTold_data()
    {
        QTest::addColumn<Appearance>("wanted");
        QTest::newRow("dark") << dark;
        QTest::newRow("light") << light;
        QTest::newRow("no preference, less motion") << still;
        QTest::newRow("light, high contrast") << contrastedLight;
        QTest::newRow("all") << Appearance{true, true, true};
    }

    void whatIsSetIsTold()
    {
        QFETCH(const Appearance, wanted);
        const auto subject = makeSubject();
        Appearance told;
        subject->appearance().follow([&](const Appearance &appearance) { told = appearance; });
        subject->set(wanted);
        QTRY_COMPARE(told, wanted);
        subject->set(none);
        QTRY_COMPARE(told, none);
    }

    void eachDifferenceIsToldOnce()
    {
        const auto subject = makeSubject();
        QList<Appearance> told;
        subject->appearance().follow([&](const Appearance &appearance) { told << appearance; });
        subject->set(dark);
        QTRY_COMPARE(told, (QList{dark}));
        subject->set(dark);
        subject->set(light);
        QTRY_COMPARE(told.last(), light);
        QCOMPARE(told, (QList{dark, light}));
    }

    void nothingIsToldInsideTheCall()
    {
        const auto subject = makeSubject();
        bool isInside = true;
        bool wasInside = false;
        int told = 0;
        subject->appearance().follow([&](const Appearance &) {
            wasInside = wasInside || isInside;
            ++told;
        });
        isInside = false;
        subject->set(dark);
        QTRY_COMPARE(told, 1);
        QVERIFY(!wasInside);
    }

    void whoHasLeftIsToldNothing()
    {
        const auto subject = makeSubject();
        int told = 0;
        subject->appearance().follow([&](const Appearance &) { ++told; });
        subject->set(dark);
        QTRY_COMPARE(told, 1);
        subject->appearance().follow({});
        subject->set(light);
        QTest::qWait(100); // UNAVOIDABLE: there is nothing to see of what is not told
        QCOMPARE(told, 1);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DesktopAppearanceContractTest)
#include "desktop_appearance_contract_test.moc"
