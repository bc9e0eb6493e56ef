// SPDX-License-Identifier: MIT
#include "app/application_id.h"
#include "platform/installed_applications.h"
#include "platform/linux/x11_frontmost_application.h"
#include "support/fake_clock.h"
#include "support/test_case.h"
#include "support/x11_program.h"
#include "support/x11_server.h"

#include <QAbstractNativeEventFilter>
#include <QRasterWindow>

namespace wrenfold {

using namespace x11;
using namespace std::chrono_literals;

namespace {

/// Counts the events that tell of a property of the root window.
class PropertyEvents final : public QAbstractNativeEventFilter
{
public:
    explicit PropertyEvents(xcb_atom_t property)
        : m_property(property)
    {
        qGuiApp->installNativeEventFilter(this);
    }
    [[nodiscard]] int count() const { return m_count; }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const xcb_property_notify_event_t *>(message);
        if ((event->response_type & ~0x80) == XCB_PROPERTY_NOTIFY && event->window == root() &&
            event->atom == m_property)
            ++m_count;
        return false;
    }

private:
    const xcb_atom_t m_property;
    int m_count = 0;
};

} // namespace

/// Without a window manager: the test says itself which window is active.
class X11FrontmostMomentTest : public TestCase
{
    Q_OBJECT

    /// Returns when the event that tells of it has been handled.
    static void setActiveWindow(xcb_window_t window)
    {
        const PropertyEvents events(atom("_NET_ACTIVE_WINDOW"));
        xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, root(), atom("_NET_ACTIVE_WINDOW"),
                            XCB_ATOM_WINDOW, 32, 1, &window);
        xcb_flush(connection());
        QTRY_COMPARE(events.count(), 1);
    }

private Q_SLOTS:
    void withoutAWindowManagerItIsNotAvailable()
    {
        InstalledApplications installed;
        FakeClock clock;
        const X11FrontmostApplication frontmost(installed, clock);
        QCOMPARE(frontmost.availability().level, Availability::Level::NotAvailable);
        QCOMPARE(frontmost.availability().reason,
                 QStringLiteral("The window manager does not tell which window is active."));
    }

    void theMomentBetweenTwoWindowsIsBridgedForHalfASecond()
    {
        InstalledApplications installed;
        FakeClock clock;
        X11FrontmostApplication frontmost(installed, clock);
        const X11Program program("Unheard");
        const X11Program nameless({});
        const RunningApplication unheard = {std::nullopt, QStringLiteral("Unheard")};
        frontmost.start();
        setActiveWindow(program.window());
        QTRY_COMPARE(frontmost.current(), unheard);

        for (const xcb_window_t nothing :
             {xcb_window_t(XCB_WINDOW_NONE), nameless.window(), xcb_window_t(0x7fffff)}) {
            setActiveWindow(nothing);
            clock.advance(499ms);
            QCOMPARE(frontmost.current(), unheard);
            clock.advance(1ms);
            QCOMPARE(frontmost.current(), std::nullopt);
            setActiveWindow(program.window());
            QCOMPARE(frontmost.current(), unheard);
        }
    }

    void ourWindowWithTheKeyboardIsInFrontWhateverIsCalledActive()
    {
        InstalledApplications installed;
        FakeClock clock;
        X11FrontmostApplication frontmost(installed, clock);
        const X11Program program("Unheard");
        frontmost.start();
        setActiveWindow(program.window());
        QTRY_COMPARE(frontmost.current(), (RunningApplication{std::nullopt, QStringLiteral("Unheard")}));

        QRasterWindow ours;
        ours.setFlags(Qt::BypassWindowManagerHint);
        ours.resize(200, 100);
        ours.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ours));
        QCOMPARE(frontmost.current(), (RunningApplication{std::nullopt, QStringLiteral("Unheard")}));
        ours.requestActivate();
        QTRY_COMPARE(frontmost.current(), (RunningApplication{applicationID(), std::nullopt}));
        frontmost.stop();
        QCOMPARE(frontmost.current(), std::nullopt);
        frontmost.start();
        ours.hide();
        QTRY_COMPARE(frontmost.current(), (RunningApplication{std::nullopt, QStringLiteral("Unheard")}));
    }

    void twoMomentsInARowAreOne()
    {
        InstalledApplications installed;
        FakeClock clock;
        X11FrontmostApplication frontmost(installed, clock);
        const X11Program program("Unheard");
        const X11Program nameless({});
        frontmost.start();
        setActiveWindow(program.window());
        QTRY_VERIFY(frontmost.current());
        setActiveWindow(XCB_WINDOW_NONE);
        clock.advance(300ms);
        setActiveWindow(nameless.window());
        clock.advance(200ms);
        QCOMPARE(frontmost.current(), std::nullopt);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::X11FrontmostMomentTest)
#include "x11_frontmost_moment_test.moc"
