// SPDX-License-Identifier: MIT
#include "platform/linux/x11_frontmost_application.h"

#include "app/application_id.h"
#include "platform/frontmost_application_contract.h"
#include "platform/installed_applications.h"
#include "platform/system_clock.h"
#include "support/x11_program.h"
#include "support/x11_server.h"

#include <QRasterWindow>
#include <QSysInfo>

#include <map>
#include <unistd.h>

namespace wrenfold {

using namespace x11;

namespace {

class X11Desktop final : public DesktopWithWindows
{
public:
    FrontmostApplication &frontmost() override { return m_frontmost; }
    void bringToFront(const RunningApplication &program) override
    {
        const QString id = *program.bundleIdentifier;
        if (!m_programs.contains(id))
            m_programs[id] = std::make_unique<X11Program>(id.section(u'.', -1).toUtf8());
        const xcb_window_t window = m_programs[id]->window();
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(window));
        m_programs[id]->activate();
        QTRY_COMPARE(valuesOf(root(), "_NET_ACTIVE_WINDOW").value(0), window);
    }
    void close(const RunningApplication &program) override { m_programs.erase(*program.bundleIdentifier); }

    X11Program &program(const RunningApplication &program)
    {
        return *m_programs.at(*program.bundleIdentifier);
    }

private:
    InstalledApplications m_installed;
    SystemClock m_clock;
    X11FrontmostApplication m_frontmost{m_installed, m_clock};
    std::map<QString, std::unique_ptr<X11Program>> m_programs;
};

} // namespace

/// Runs once for each window manager, see with_x11.sh.
class X11FrontmostApplicationTest : public FrontmostApplicationContract
{
    Q_OBJECT

protected:
    [[nodiscard]] std::unique_ptr<DesktopWithWindows> makeDesktop() override
    {
        return std::make_unique<X11Desktop>();
    }

private Q_SLOTS:
    void aWindowOfOursIsOurs()
    {
        X11Desktop desktop;
        desktop.frontmost().start();
        QRasterWindow window;
        window.resize(200, 100);
        window.show();
        window.requestActivate();
        QTRY_COMPARE(desktop.frontmost().current(), (RunningApplication{applicationID(), std::nullopt}));
    }

    void aWindowOfOursThatQtDoesNotKnowIsOursToo()
    {
        X11Desktop desktop;
        desktop.frontmost().start();
        X11Program dialog("Wrenfold");
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(dialog.window()));
        dialog.activate();
        QTRY_COMPARE(desktop.frontmost().current(), (RunningApplication{applicationID(), std::nullopt}));
    }

    void everyWindowOfTheApplicationOnThisDesktopIsMinimised()
    {
        X11Desktop desktop;
        desktop.frontmost().start();
        X11Program second("WRITER");
        X11Program other("Reader");
        desktop.bringToFront(writer());
        QTRY_COMPARE(desktop.frontmost().current(), writer());
        QTRY_COMPARE(valuesOf(root(), "_NET_CLIENT_LIST").size(), 3);
        desktop.frontmost().hide(writer());
        QTRY_COMPARE(valuesOf(desktop.program(writer()).window(), "WM_STATE").value(0), 3u);
        QTRY_COMPARE(valuesOf(second.window(), "WM_STATE").value(0), 3u);
        QCOMPARE(valuesOf(other.window(), "WM_STATE").value(0), 1u);
    }

    void aWindowOnAnotherDesktopAndADockAreLeftAlone()
    {
        X11Desktop desktop;
        desktop.frontmost().start();
        X11Program elsewhere("Writer");
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(elsewhere.window()));
        elsewhere.moveToDesktop(1);
        QTRY_COMPARE(valuesOf(elsewhere.window(), "_NET_WM_DESKTOP"), Values{1});
        desktop.bringToFront(writer());
        X11Program dock("Writer");
        dock.setNumber("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, dock.atom("_NET_WM_WINDOW_TYPE_DOCK"));
        QTRY_COMPARE(desktop.frontmost().current(), writer());
        desktop.frontmost().hide(writer());
        QTRY_COMPARE(valuesOf(desktop.program(writer()).window(), "WM_STATE").value(0), 3u);
        QVERIFY(!hasState(elsewhere, "_NET_WM_STATE_HIDDEN"));
        QVERIFY(!hasState(dock, "_NET_WM_STATE_HIDDEN"));
    }

    void aWindowThatIsNamedAfterItCameToTheFrontIsFollowed()
    {
        X11Desktop desktop;
        desktop.frontmost().start();
        X11Program late({});
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(late.window()));
        late.activate();
        QTRY_COMPARE(valuesOf(root(), "_NET_ACTIVE_WINDOW").value(0), late.window());
        QTRY_COMPARE(desktop.frontmost().current(), std::nullopt);
        late.setClass("Reader");
        QTRY_COMPARE(desktop.frontmost().current(), reader());
    }

    void theProgramTellsWhereTheNamesDoNotIfItRunsHere()
    {
        putFile(dataHome() + QStringLiteral("/applications/org.example.Test.desktop"),
                "[Desktop Entry]\nType=Application\nName=Test\nExec=/x/" +
                    QCoreApplication::applicationFilePath().section(u'/', -1).toUtf8() + "\n");
        X11Desktop desktop;
        desktop.frontmost().start();
        X11Program program("Unknown");
        program.setNumber("_NET_WM_PID", XCB_ATOM_CARDINAL, uint32_t(::getpid()));
        program.setText("WM_CLIENT_MACHINE", "elsewhere");
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(program.window()));
        program.activate();
        QTRY_COMPARE(desktop.frontmost().current(),
                     (RunningApplication{std::nullopt, QStringLiteral("Unknown")}));
        program.setText("WM_CLIENT_MACHINE", QSysInfo::machineHostName().toUtf8());
        desktop.frontmost().stop();
        desktop.frontmost().start();
        QTRY_COMPARE(desktop.frontmost().current(),
                     (RunningApplication{QStringLiteral("org.example.Test"), QStringLiteral("Test")}));
    }

private:
    static bool hasState(const X11Program &program, const char *state)
    {
        return valuesOf(program.window(), "_NET_WM_STATE").contains(atom(state));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::X11FrontmostApplicationTest)
#include "moc_frontmost_application_contract.cpp"
#include "x11_frontmost_application_test.moc"
