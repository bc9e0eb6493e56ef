// SPDX-License-Identifier: MIT
#include "platform/linux/wlroots_frontmost_application.h"

#include "app/application_id.h"
#include "support/files.h"
#include "support/sway.h"
#include "support/test_case.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QTemporaryDir>

#include <unistd.h>
#include <xcb/xcb.h>

namespace wrenfold {
namespace {

const RunningApplication writer{QStringLiteral("org.example.Writer"), QStringLiteral("ライター")};
const RunningApplication reader{QStringLiteral("org.example.Reader"), QStringLiteral("Reader")};
const QString scratchpad = QStringLiteral("__i3_scratch");

/// Xwayland lets only sway's own user in, and for root that is another.
xcb_connection_t *connectToXwayland()
{
    std::optional<RightsOfNobody> swaysRights;
    if (::geteuid() == 0)
        swaysRights.emplace();
    return xcb_connect(nullptr, nullptr);
}

/// A window of a program that speaks X11.
class X11Window
{
public:
    X11Window(const QByteArray &instance, const QByteArray &windowClass)
        : m_connection(connectToXwayland())
    {
        if (xcb_connection_has_error(m_connection) != 0)
            qFatal("Xwayland cannot be reached");
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const xcb_window_t window = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL,
                          &screen->white_pixel);
        const QByteArray names = instance + '\0' + windowClass + '\0';
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
                            8, static_cast<uint32_t>(names.size()), names.constData());
        xcb_map_window(m_connection, window);
        xcb_flush(m_connection);
    }
    ~X11Window() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(X11Window)

private:
    xcb_connection_t *m_connection;
};

} // namespace

/// Against a real sway, with programs' real windows.
class WlrootsFrontmostApplicationTest : public TestCase
{
    Q_OBJECT

private:
    QTemporaryDir m_data;
    InstalledApplications m_installed;
    std::unique_ptr<WlrootsFrontmostApplication> m_frontmost;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir(m_data.path()).mkpath(QStringLiteral("applications")));
        putFile(m_data.filePath(QStringLiteral("applications/org.example.Writer.desktop")),
                "[Desktop Entry]\nType=Application\nName=Writer\nName[ja]=ライター\nExec=writer\n");
        putFile(
            m_data.filePath(QStringLiteral("applications/org.example.Reader.desktop")),
            "[Desktop Entry]\nType=Application\nName=Reader\nExec=reader\nStartupWMClass=reader-window\n");
        qputenv("XDG_DATA_HOME", m_data.path().toUtf8());
        qputenv("XDG_DATA_DIRS", m_data.filePath(QStringLiteral("none")).toUtf8());
        qputenv("LC_ALL", "ja_JP.UTF-8");
    }

    void init()
    {
        TestCase::init();
        sway::run(QStringLiteral("workspace 1"));
        m_frontmost = WlrootsFrontmostApplication::connectIfOffered(m_installed);
        QVERIFY(m_frontmost);
        QCOMPARE(m_frontmost->availability(), Availability{});
        m_frontmost->start();
    }

    void theActiveWindowIsReportedByItsDesktopEntry()
    {
        const sway::Window window(QStringLiteral("org.example.Writer"));
        QTRY_COMPARE(m_frontmost->current(), writer);
    }

    void anotherWindowThatBecomesActiveIsReported()
    {
        const sway::Window first(QStringLiteral("org.example.Writer"));
        const sway::Window second(QStringLiteral("reader-window"));
        QTRY_COMPARE(m_frontmost->current(), reader);
        sway::run(QStringLiteral("[app_id=org.example.Writer] focus"));
        QTRY_COMPARE(m_frontmost->current(), writer);
    }

    void aWindowOfNoInstalledApplicationIsReportedByItsName()
    {
        const sway::Window window(QStringLiteral("nobody-knows"));
        QTRY_COMPARE(m_frontmost->current(),
                     (RunningApplication{std::nullopt, QStringLiteral("nobody-knows")}));
    }

    void anApplicationInstalledLaterIsKnownWhenItsWindowComes()
    {
        const sway::Window before(QStringLiteral("org.example.Writer"));
        QTRY_COMPARE(m_frontmost->current(), writer);
        putFile(m_data.filePath(QStringLiteral("applications/org.example.New.desktop")),
                "[Desktop Entry]\nType=Application\nName=New\nExec=new\n");
        const sway::Window window(QStringLiteral("org.example.New"));
        QTRY_COMPARE(m_frontmost->current(),
                     (RunningApplication{QStringLiteral("org.example.New"), QStringLiteral("New")}));
    }

    void ourOwnWindowIsOurs_data()
    {
        QTest::addColumn<QString>("appID");
        QTest::newRow("by the desktop entry") << applicationID();
        QTest::newRow("by the program") << QStringLiteral("wrenfold");
        QTest::newRow("in another case") << QStringLiteral("Wrenfold");
    }
    void ourOwnWindowIsOurs()
    {
        QFETCH(const QString, appID);
        const sway::Window window(appID);
        QTRY_COMPARE(m_frontmost->current(), (RunningApplication{applicationID(), std::nullopt}));
    }

    void anX11WindowIsReportedByItsClass()
    {
        const X11Window window("something", "Reader-Window");
        QTRY_COMPARE(m_frontmost->current(), reader);
        m_frontmost->hide(reader);
        QTRY_COMPARE(m_frontmost->current(), std::nullopt);
        QCOMPARE(sway::windowsOn(scratchpad), {QStringLiteral("Reader-Window")});
    }

    void nothingIsInFrontOnAnEmptyWorkspace()
    {
        const sway::Window window(QStringLiteral("org.example.Writer"));
        QTRY_COMPARE(m_frontmost->current(), writer);
        sway::run(QStringLiteral("workspace 2"));
        QTRY_COMPARE(m_frontmost->current(), std::nullopt);
    }

    void nothingIsInFrontWhenTheLastWindowHasClosed()
    {
        {
            const sway::Window window(QStringLiteral("org.example.Writer"));
            QTRY_COMPARE(m_frontmost->current(), writer);
        }
        QTRY_COMPARE(m_frontmost->current(), std::nullopt);
    }

    void hidingTakesTheApplicationsWindowsOnThisWorkspaceOutOfSight()
    {
        sway::run(QStringLiteral("workspace 2"));
        const sway::Window elsewhere(QStringLiteral("org.example.Writer"));
        sway::run(QStringLiteral("workspace 1"));
        const sway::Window other(QStringLiteral("reader-window"));
        const sway::Window floating(QStringLiteral("org.example.Writer"));
        sway::run(QStringLiteral("floating enable"));
        const sway::Window whole(QStringLiteral("org.example.writer"));
        sway::run(QStringLiteral("fullscreen enable"));
        QTRY_COMPARE(m_frontmost->current(), writer);

        m_frontmost->hide(writer);
        QTRY_COMPARE(m_frontmost->current(), reader);
        QCOMPARE(sway::windowsOn(QStringLiteral("1")), {QStringLiteral("reader-window")});
        QCOMPARE(sway::windowsOn(QStringLiteral("2")), {QStringLiteral("org.example.Writer")});
        QStringList hidden = sway::windowsOn(scratchpad);
        hidden.sort();
        QCOMPARE(hidden,
                 (QStringList{QStringLiteral("org.example.Writer"), QStringLiteral("org.example.writer")}));
    }

    void whereNothingHidesAWindowItSaysSo()
    {
        const sway::Window window(QStringLiteral("org.example.Writer"));
        QTRY_COMPARE(m_frontmost->current(), writer);
        QCOMPARE(m_frontmost->availability(), Availability());
        const QByteArray socket = qgetenv("SWAYSOCK");
        qunsetenv("SWAYSOCK");
        QTest::ignoreMessage(QtWarningMsg, "the compositor does not minimise other programs' windows");
        m_frontmost->hide(writer);
        QTRY_COMPARE(m_frontmost->availability().level, Availability::Level::Limited);
        qputenv("SWAYSOCK", socket);
        QCOMPARE(m_frontmost->current(), writer);
    }

    void aWindowThatComesAfterTheHidingStaysInSight()
    {
        const sway::Window window(QStringLiteral("reader-window"));
        QTRY_COMPARE(m_frontmost->current(), reader);
        m_frontmost->hide(writer);
        const sway::Window late(QStringLiteral("org.example.Writer"));
        QTRY_COMPARE(m_frontmost->current(), writer);
        m_frontmost->hide(reader); // What was asked for first is done by when this is.
        QTRY_COMPARE(sway::windowsOn(scratchpad).size(), 1);
        QCOMPARE(sway::windowsOn(QStringLiteral("1")), {QStringLiteral("org.example.Writer")});
    }

    void aWindowBroughtBackIsInFrontAgain()
    {
        const sway::Window window(QStringLiteral("org.example.Writer"));
        QTRY_COMPARE(m_frontmost->current(), writer);
        m_frontmost->hide(writer);
        QTRY_COMPARE(m_frontmost->current(), std::nullopt);
        sway::run(QStringLiteral("scratchpad show"));
        QTRY_COMPARE(m_frontmost->current(), writer);
        m_frontmost->hide(writer);
        QTRY_COMPARE(m_frontmost->current(), std::nullopt);
    }

    void nothingIsFollowedFromStopToStart()
    {
        const sway::Window first(QStringLiteral("org.example.Writer"));
        QTRY_COMPARE(m_frontmost->current(), writer);
        m_frontmost->stop();
        QCOMPARE(m_frontmost->current(), std::nullopt);
        m_frontmost->hide(writer);
        const sway::Window second(QStringLiteral("reader-window"));
        QCOMPARE(m_frontmost->current(), std::nullopt);
        m_frontmost->start();
        QTRY_COMPARE(m_frontmost->current(), reader);
        QCOMPARE(sway::windowsOn(scratchpad), QStringList());
    }

    void anotherSessionHasNone_data()
    {
        QTest::addColumn<QString>("display");
        QTest::newRow("no Wayland") << QString();
        QTest::newRow("no such socket") << QStringLiteral("/nowhere/wayland-0");
        QTest::newRow("a name that is too long") << QString(300, u'x');
    }
    void anotherSessionHasNone()
    {
        QFETCH(const QString, display);
        const QByteArray real = qgetenv("WAYLAND_DISPLAY");
        qputenv("WAYLAND_DISPLAY", display.toUtf8());
        const auto none = WlrootsFrontmostApplication::connectIfOffered(m_installed);
        qputenv("WAYLAND_DISPLAY", real);
        QVERIFY(!none);
    }

    void aCompositorThatDoesNotAnswerIsGivenUp()
    {
        QLocalServer mute;
        QVERIFY(mute.listen(m_data.filePath(QStringLiteral("mute"))));
        const QByteArray real = qgetenv("WAYLAND_DISPLAY");
        qputenv("WAYLAND_DISPLAY", mute.fullServerName().toUtf8());
        QElapsedTimer timer;
        timer.start();
        const auto none = WlrootsFrontmostApplication::connectIfOffered(m_installed);
        const qint64 taken = timer.elapsed();
        qputenv("WAYLAND_DISPLAY", real);
        QVERIFY(!none);
        QVERIFY2(taken >= 450 && taken < 2000, qPrintable(QString::number(taken)));
    }

    // The last one: nothing is left afterwards.
    void whenTheCompositorHasGoneNothingIsInFront()
    {
        const sway::Window window(QStringLiteral("org.example.Writer"));
        QTRY_COMPARE(m_frontmost->current(), writer);
        sway::end();
        QTRY_COMPARE(m_frontmost->availability().level, Availability::Level::NotAvailable);
        QVERIFY(!m_frontmost->availability().reason.isEmpty());
        QCOMPARE(m_frontmost->current(), std::nullopt);
        m_frontmost->hide(writer);
        m_frontmost->stop();
        m_frontmost->start();
        // On its way out sway may still take a connection.
        QTRY_COMPARE(m_frontmost->availability().level, Availability::Level::NotAvailable);
        QCOMPARE(m_frontmost->current(), std::nullopt);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::WlrootsFrontmostApplicationTest)
#include "wlroots_frontmost_application_test.moc"
