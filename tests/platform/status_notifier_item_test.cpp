// SPDX-License-Identifier: MIT
#include "platform/linux/status_notifier_item.h"
#include "support/fake_status_host.h"
#include "support/private_bus.h"
#include "support/test_case.h"

#include <QDBusObjectPath>
#include <QDir>
#include <QProcess>

#include <csignal>
#include <optional>

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

const auto labelDrawer = QStringLiteral("org.ayatana.indicator.application");
const auto fromUser = QStringLiteral("A & B_c <b>x</b>");

/// One address for all tests, because the bus library looks for it once in a process.
PrivateBus &theBus()
{
    static PrivateBus bus;
    return bus;
}

StatusItemContent content(const QString &icon, const QString &label, const QString &toolTip)
{
    const auto paint = [](int side) {
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(255, 0, 0, 51));
        return image;
    };
    return {{icon, paint}, label, toolTip};
}

const StatusItemContent first =
    content(QStringLiteral("pin"), QStringLiteral(" one"), QStringLiteral("Wren Fold\nNOW: one"));

/// A bus with a status area that has yet to come, and the program's side of it.
struct Desk
{
    PrivateBus &bus = theBus();
    FakeStatusHost host{bus.address()};
    QTemporaryDir runtimeFolder;
    QStringList calls;
    QList<bool> labels;
    int hostChanges = 0;
    QList<StatusMenuRow> rows{
        {fromUser, 0, false}, {}, {QStringLiteral("show"), 4}, {QStringLiteral("go"), 9}};
    std::optional<StatusNotifierItem> item;

    explicit Desk(std::chrono::milliseconds patience = 30s)
    {
        qputenv("XDG_RUNTIME_DIR", runtimeFolder.path().toUtf8());
        const QString error = bus.start();
        if (!error.isEmpty())
            qFatal("%s", qPrintable(error));
        item.emplace([this] { ++hostChanges; }, patience);
    }
    ~Desk() { bus.stop(); }

    void show(const StatusItemContent &shown = first)
    {
        item->show({.activate = [this] { calls << QStringLiteral("activate"); },
                    .openMenu = [this] { calls << QStringLiteral("menu"); },
                    .menuRows = [this] { return rows; },
                    .chooseRow = [this](int command) { calls << QString::number(command); },
                    .labelShown = [this](bool isShown) { labels << isShown; }});
        item->setContent(shown);
    }
    [[nodiscard]] bool waitUntilHosted()
    {
        return QTest::qWaitFor([this] { return item->isHosted(); });
    }
    /// The item is in the status area, whose program has these names too, and what it said at that has been heard.
    [[nodiscard]] bool appear(const QStringList &names = {})
    {
        if (!host.arrive(names))
            return false;
        show();
        const bool isHosted = waitUntilHosted() && !host.properties().isEmpty();
        (void)host.takeSignals();
        return isHosted;
    }
};

} // namespace

/// The status item on the bus, and status areas in good and bad health.
class StatusNotifierItemTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("DBUS_SESSION_BUS_ADDRESS", theBus().address().toUtf8()); }

    void aHostReadsAllItAsksFor()
    {
        Desk desk;
        QVERIFY(desk.appear());
        const QString ownName = QStringLiteral("org.kde.StatusNotifierItem-%1-1");
        QCOMPARE(desk.host.items(), QStringList{ownName.arg(QCoreApplication::applicationPid())});
        const QVariantMap properties = desk.host.properties();
        for (const auto &[name, value] :
             {std::pair("Id", "wrenfold"), std::pair("Title", "Wren Fold"),
              std::pair("Category", "ApplicationStatus"), std::pair("Status", "Active")})
            QCOMPARE(properties.value(QLatin1String(name)).toString(), QString::fromLatin1(value));
        QCOMPARE(properties.value(QStringLiteral("ItemIsMenu")), QVariant(false));
        for (const char *name : {"IconThemePath", "OverlayIconPixmap", "AttentionIconPixmap", "IconName"})
            QVERIFY2(properties.contains(QLatin1String(name)), name);
        QVERIFY(!properties.contains(QStringLiteral("XAyatanaLabel")));
        QCOMPARE(desk.item->labelAvailability().level, Availability::Level::Limited);
    }

    void anItemWithoutContentIsNotSeen()
    {
        const auto status = QStringLiteral("Status");
        Desk desk;
        QVERIFY(desk.host.arrive());
        desk.show({});
        QVERIFY(desk.waitUntilHosted());
        QCOMPARE(desk.host.property(status).toString(), QStringLiteral("Passive"));
        desk.item->setContent(first);
        QCOMPARE(desk.host.property(status).toString(), QStringLiteral("Active"));
        QVERIFY(desk.host.takeSignals().contains(QStringLiteral("NewStatus")));
    }

    void theIconComesInEachSizeInNetworkOrder()
    {
        Desk desk;
        QVERIFY(desk.appear());
        const auto pixmaps =
            qdbus_cast<QList<StatusPixmap>>(desk.host.property(QStringLiteral("IconPixmap")));
        QList<int> sides;
        for (const StatusPixmap &pixmap : pixmaps) {
            QCOMPARE(pixmap.width, pixmap.height);
            QCOMPARE(pixmap.bytes.size(), qsizetype(pixmap.width) * pixmap.height * 4);
            QCOMPARE(pixmap.bytes.first(4).toHex(), QByteArray("33ff0000"));
            sides << pixmap.width;
        }
        QCOMPARE(sides, (QList<int>{16, 22, 24, 32, 48}));
    }

    void theIconsFileIsTheUsersAloneAndGoesAtTheEnd()
    {
        Desk desk;
        QVERIFY(desk.appear());
        const QFileInfo file(desk.host.property(QStringLiteral("IconName")).toString());
        QVERIFY(file.absoluteFilePath().startsWith(desk.runtimeFolder.path()));
        QCOMPARE(QImage(file.filePath()).size(), QSize(48, 48));
        QCOMPARE(QFileInfo(file.path()).permissions() &
                     (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther),
                 QFile::Permissions());
        desk.item->setContent(content(QStringLiteral("pin-2"), {}, {}));
        QVERIFY(desk.host.property(QStringLiteral("IconName")).toString() != file.filePath());
        desk.item.reset();
        QCOMPARE(QDir(desk.runtimeFolder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
    }

    void withoutARuntimeFolderThePixmapsAloneAreServed()
    {
        Desk desk;
        qputenv("XDG_RUNTIME_DIR", "/proc/no such folder");
        QTest::ignoreMessage(QtInfoMsg, "There is no folder for the status icon's files");
        QVERIFY(desk.appear());
        QCOMPARE(desk.host.property(QStringLiteral("IconName")).toString(),
                 QString()); // And says so no more.
        QVERIFY(!qdbus_cast<QList<StatusPixmap>>(desk.host.property(QStringLiteral("IconPixmap"))).isEmpty());
    }

    void onlyWhatHasChangedIsSaid()
    {
        Desk desk;
        QVERIFY(desk.appear({labelDrawer}));
        const auto said = [&](const StatusItemContent &shown) {
            desk.item->setContent(shown);
            (void)desk.host.properties(); // Whatever was on its way has come.
            return desk.host.takeSignals();
        };
        QCOMPARE(said(first), QStringList());
        StatusItemContent next = first;
        next.toolTip = QStringLiteral("Wren Fold\nNOW: two");
        QCOMPARE(said(next), QStringList{QStringLiteral("NewToolTip")});
        next.label = QStringLiteral(" two");
        QCOMPARE(said(next), QStringList{QStringLiteral("XAyatanaNewLabel")});
        QCOMPARE(desk.host.lastSignal().value(0).toString(), QStringLiteral(" two"));
        next.icon.name = QStringLiteral("pin-2");
        QCOMPARE(said(next), QStringList{QStringLiteral("NewIcon")});
        QCOMPARE(said(next), QStringList());
    }

    void theLabelIsThereOnlyWhereItIsDrawnAndNotEmpty()
    {
        const auto label = QStringLiteral("XAyatanaLabel");
        Desk desk;
        QVERIFY(desk.appear({labelDrawer}));
        QCOMPARE(desk.labels, (QList<bool>{false, true}));
        QCOMPARE(desk.item->labelAvailability(), Availability());
        QCOMPARE(desk.host.property(label).toString(), QStringLiteral(" one"));
        desk.item->setContent(content(QStringLiteral("pin"), {}, {}));
        QVERIFY(!desk.host.properties().contains(label));
        QVERIFY(desk.host.arrive()); // Another program, which draws none.
        QTRY_COMPARE(desk.labels, (QList<bool>{false, true, false}));
        QVERIFY(desk.waitUntilHosted());
        desk.item->setContent(first);
        QVERIFY(!desk.host.properties().contains(label));
    }

    void aNameThatAnotherProgramHasSaysNothingOfTheLabel()
    {
        Desk desk;
        QProcess other;
        other.start(
            QStringLiteral("/usr/bin/python3"),
            {QStringLiteral("-c"),
             QStringLiteral("import sys\n"
                            "from gi.repository import Gio, GLib\n"
                            "owned = lambda bus, name: print(name, flush=True)\n"
                            "Gio.bus_own_name(Gio.BusType.SESSION, sys.argv[1], 0, None, owned, None)\n"
                            "GLib.MainLoop().run()\n"),
             labelDrawer});
        QVERIFY(other.waitForReadyRead());
        QVERIFY(desk.appear());
        QCOMPARE(desk.labels, QList<bool>{false});
        other.kill();
        QVERIFY(other.waitForFinished());
    }

    void textsOfTheUserAreShownAsTheyAre()
    {
        Desk desk;
        QVERIFY(desk.appear({labelDrawer}));
        desk.item->setContent(
            content(QStringLiteral("pin"), fromUser, QStringLiteral("Wren Fold\n") + fromUser));
        const QVariantMap properties = desk.host.properties();
        QCOMPARE(properties.value(QStringLiteral("XAyatanaLabel")).toString(), fromUser);
        const auto toolTip = qdbus_cast<StatusToolTip>(properties.value(QStringLiteral("ToolTip")));
        QCOMPARE(toolTip.text, QStringLiteral("A &amp; B_c &lt;b&gt;x&lt;/b&gt;"));
        const QList<DBusMenuLayout> rows = desk.host.openMenu();
        QCOMPARE(rows.value(0).properties.value(QStringLiteral("label")).toString(),
                 QStringLiteral("A & B__c <b>x</b>"));
    }

    void noTextBreaksItsLineOrTurnsItsNeighbours()
    {
        const auto wicked = QStringLiteral("a\nb\tc\u2028d\u202Ee\u2066f") + QChar(u'\0') + u'g';
        Desk desk;
        desk.rows = {{wicked, 1}};
        QVERIFY(desk.appear({labelDrawer}));
        desk.item->setContent(
            content(QStringLiteral("pin"), wicked, QStringLiteral("Wren\u202E Fold\n") + wicked));
        const QVariantMap properties = desk.host.properties();
        QCOMPARE(properties.value(QStringLiteral("XAyatanaLabel")).toString(), QStringLiteral("a b c def g"));
        const auto toolTip = qdbus_cast<StatusToolTip>(properties.value(QStringLiteral("ToolTip")));
        QCOMPARE(toolTip.title, QStringLiteral("Wren Fold"));
        QCOMPARE(toolTip.text, QStringLiteral("a\nb c def g"));
        QCOMPARE(desk.host.openMenu().value(0).properties.value(QStringLiteral("label")).toString(),
                 QStringLiteral("a b c def g"));
    }

    void eitherButtonShowsThePanel()
    {
        Desk desk;
        QVERIFY(desk.appear());
        desk.host.call(QStringLiteral("Activate"), {0, 25});
        desk.host.call(QStringLiteral("SecondaryActivate"), {0, 25});
        desk.host.call(QStringLiteral("ContextMenu"), {0, 25});
        QCOMPARE(desk.host.call(QStringLiteral("Scroll"), {1, QStringLiteral("vertical")}), QVariantList());
        QTRY_COMPARE(desk.calls, (QStringList{QStringLiteral("activate"), QStringLiteral("activate"),
                                              QStringLiteral("menu")}));
    }

    void aCallOfAnotherKindIsRefused()
    {
        const auto refused = QVariantList{QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface")};
        Desk desk;
        QVERIFY(desk.appear());
        QCOMPARE(desk.host.call(QStringLiteral("Activate"), {}), refused);
        QCOMPARE(desk.host.call(QStringLiteral("Activate"), {QStringLiteral("1"), 2}), refused);
        QCOMPARE(desk.host.callMenu(QStringLiteral("GetLayout"), {0}), refused);
    }

    void aHostThatRestartsShowsItAgain()
    {
        Desk desk;
        QVERIFY(desk.appear());
        desk.host.leave();
        QTRY_VERIFY(!desk.item->isHosted());
        desk.item->setContent(content(QStringLiteral("pin-2"), {}, {})); // Nobody is told.
        QVERIFY(desk.host.arrive());
        QVERIFY(desk.waitUntilHosted());
        QCOMPARE(desk.host.items().size(), 1);
        QVERIFY(desk.host.property(QStringLiteral("IconName")).toString().contains(QStringLiteral("pin-2")));
        QCOMPARE(desk.host.takeSignals(), QStringList());
    }

    void aHostThatComesLaterIsFound()
    {
        Desk desk;
        desk.show();
        QTRY_COMPARE(desk.hostChanges, 1); // It is known that there is none.
        QVERIFY(!desk.item->isHosted());
        QCOMPARE(desk.item->availability().level, Availability::Level::NotAvailable);
        QVERIFY(desk.host.arrive());
        QVERIFY(desk.waitUntilHosted());
    }

    void aWatcherWithoutAHostShowsNothing()
    {
        Desk desk;
        desk.host.setHostThere(false);
        QVERIFY(desk.host.arrive());
        desk.show();
        QTRY_COMPARE(desk.hostChanges, 1);
        QVERIFY(!desk.item->isHosted());
        desk.host.setHostThere(true);
        QVERIFY(desk.waitUntilHosted());
        desk.host.setHostThere(false);
        QTRY_VERIFY(!desk.item->isHosted());
    }

    void aHostThatHangsIsWaitedFor()
    {
        Desk desk(300ms);
        desk.host.setHanging(true);
        QVERIFY(desk.host.arrive());
        desk.show();
        QTRY_COMPARE(desk.host.items().size(), 1);
        QTest::qWait(600); // UNAVOIDABLE: there is nothing to see of an end of patience that does not come
        QCOMPARE(desk.hostChanges, 0);
        desk.host.setHanging(false);
        QVERIFY(desk.waitUntilHosted());
    }

    void aHostThatRefusesTheItemIsNone()
    {
        Desk desk;
        desk.host.setRefusing(true);
        QVERIFY(desk.host.arrive());
        QTest::ignoreMessage(QtInfoMsg, "The status area refuses the item: not this one");
        desk.show();
        QTRY_COMPARE(desk.hostChanges, 1);
        QVERIFY(!desk.item->isHosted());
    }

    void withoutABusThereIsNoHost()
    {
        int changes = 0;
        theBus().stop();
        StatusNotifierItem item([&] { ++changes; });
        item.show({[] {}, [] {}, [] { return QList<StatusMenuRow>(); }, [](int) {}, [](bool) {}});
        QCOMPARE(changes, 0); // Whatever is asked is asked on another thread.
        QTRY_COMPARE(changes, 1);
        QVERIFY(!item.isHosted());
        item.setContent(first);
        item.updateMenu();
    }

    void aBusThatComesBackIsFoundWithTheNextContent()
    {
        Desk desk(200ms);
        QVERIFY(desk.appear());
        desk.bus.stop();
        QTRY_VERIFY(!desk.item->isHosted());
        QCOMPARE(desk.bus.start(), QString());
        QVERIFY(desk.host.arrive());
        int number = 0;
        QVERIFY(QTest::qWaitFor([&] {
            desk.item->setContent(content(QStringLiteral("pin-%1").arg(++number), {}, {}));
            return desk.item->isHosted();
        }));
        QVERIFY(!desk.host.properties().isEmpty());
        QVERIFY(desk.host.property(QStringLiteral("IconName")).toString().contains(QString::number(number)));
    }

    void aBusThatHangsHoldsUpNobody()
    {
        Desk desk;
        QVERIFY(desk.host.arrive());
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        desk.show();
        desk.item->updateMenu();
        const qint64 spent = timer.elapsed();
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGCONT);
        QVERIFY2(spent < 1000, qPrintable(QString::number(spent)));
        QVERIFY(desk.waitUntilHosted());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::StatusNotifierItemTest)
#include "status_notifier_item_test.moc"
