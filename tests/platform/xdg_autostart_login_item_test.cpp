// SPDX-License-Identifier: MIT
#include "platform/desktop_entries.h"
#include "platform/linux/xdg_autostart_login_item.h"
#include "support/files.h"
#include "support/test_case.h"
#include "support/test_mount.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace wrenfold {

/// The autostart entry in real folders.
class XdgAutostartLoginItemTest : public TestCase
{
    Q_OBJECT

    using Status = LoginItemStatus;

    std::unique_ptr<QTemporaryDir> m_place;

    [[nodiscard]] QString at(const QString &path) const { return m_place->filePath(path); }
    [[nodiscard]] QString program() const { return at(QStringLiteral("wrenfold")); }
    [[nodiscard]] QString ownFolder() const { return at(QStringLiteral("config/autostart")); }
    [[nodiscard]] QString ownEntry() const
    {
        return ownFolder() + QStringLiteral("/dev.tolvane.Wrenfold.desktop");
    }
    [[nodiscard]] static QStringList own() { return {QStringLiteral("dev.tolvane.Wrenfold.desktop")}; }
    [[nodiscard]] XdgAutostartLoginItem item() const { return XdgAutostartLoginItem(program()); }

    void putProgram(const QString &path) const { putFile(path, "#!/bin/sh\ntouch \"$STARTED\"\n", 0755); }
    void putOwnEntry(const QByteArray &lines) const
    {
        QVERIFY(QDir().mkpath(ownFolder()));
        putFile(ownEntry(), "[Desktop Entry]\nType=Application\nName=Wren Fold\n" + lines);
    }
    void putSystemEntry(const QByteArray &lines) const
    {
        const QString folder = at(QStringLiteral("second/autostart"));
        QVERIFY(QDir().mkpath(folder));
        putFile(folder + QStringLiteral("/dev.tolvane.Wrenfold.desktop"),
                "[Desktop Entry]\nType=Application\nName=Wren Fold\n" + lines);
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_place = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(at(QStringLiteral("config"))));
        qputenv("XDG_CONFIG_DIRS",
                QFile::encodeName(at(QStringLiteral("first")) + u':' + at(QStringLiteral("second"))));
        putProgram(program());
    }

    void withoutAnEntryItIsNotRegisteredAndLookingMakesNothing()
    {
        QCOMPARE(item().status(), Status::NotRegistered);
        QVERIFY(!QFile::exists(at(QStringLiteral("config"))));
    }

    void registeringWritesAnEntryForTheProgram()
    {
        QCOMPARE(item().registerProgram(), LoginItem::Error());
        QCOMPARE(item().status(), Status::Enabled);
        QCOMPARE(namesIn(ownFolder()), own());
        QCOMPARE(modeOf(ownEntry()), mode_t(0644));
        QCOMPARE(bytesOf(ownEntry()), "[Desktop Entry]\nType=Application\nName=Wren Fold\nExec=\"" +
                                          program().toUtf8() +
                                          "\"\nIcon=dev.tolvane.Wrenfold\nX-GNOME-Autostart-enabled=true\n");
    }

    void unregisteringRemovesTheEntryAndAgainIsNoError()
    {
        QCOMPARE(item().registerProgram(), LoginItem::Error());
        QCOMPARE(item().unregisterProgram(), LoginItem::Error());
        QCOMPARE(item().status(), Status::NotRegistered);
        QCOMPARE(namesIn(ownFolder()), QStringList());
        QCOMPARE(item().unregisterProgram(), LoginItem::Error());
    }

    void whatAnEntrySaysDecidesTheStatus_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<LoginItemStatus>("status");
        QTest::newRow("a program on the path") << QByteArray("Exec=sh -c true") << Status::Enabled;
        QTest::newRow("hidden") << QByteArray("Exec=sh\nHidden=true") << Status::RequiresApproval;
        QTest::newRow("only hidden") << QByteArray("Hidden=true") << Status::RequiresApproval;
        QTest::newRow("not hidden") << QByteArray("Exec=sh\nHidden=false") << Status::Enabled;
        QTest::newRow("switched off")
            << QByteArray("Exec=sh\nX-GNOME-Autostart-enabled=false") << Status::RequiresApproval;
        QTest::newRow("switched on") << QByteArray("Exec=sh\nX-GNOME-Autostart-enabled=true")
                                     << Status::Enabled;
        QTest::newRow("a program that has gone") << QByteArray("Exec=/nowhere/wrenfold") << Status::NotFound;
        QTest::newRow("no program") << QByteArray() << Status::NotFound;
        QTest::newRow("a folder") << QByteArray("Exec=/usr") << Status::NotFound;
        QTest::newRow("no text") << QByteArray("Exec=\xff\xfe") << Status::NotFound;
    }

    void whatAnEntrySaysDecidesTheStatus()
    {
        QFETCH(QByteArray, lines);
        putOwnEntry(lines);
        QTEST(item().status(), "status");
    }

    void anEntryThatIsNoFileIsNotFound()
    {
        QVERIFY(QDir().mkpath(ownEntry()));
        QCOMPARE(item().status(), Status::NotFound);
    }

    void aProgramThatIsMovedAwayIsNotFoundUntilItRegistersFromItsNewPlace()
    {
        QCOMPARE(item().registerProgram(), LoginItem::Error());
        const QString moved = at(QStringLiteral("moved"));
        QVERIFY(QFile::rename(program(), moved));
        QCOMPARE(item().status(), Status::NotFound);
        XdgAutostartLoginItem movedItem(moved);
        QCOMPARE(movedItem.registerProgram(), LoginItem::Error());
        QCOMPARE(movedItem.status(), Status::Enabled);
    }

    void registeringTurnsOnWhatTheDesktopsSettingsSwitchedOff_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::newRow("hidden") << QByteArray("Hidden=true\n");
        QTest::newRow("switched off") << QByteArray("X-GNOME-Autostart-enabled=false\n");
    }

    void registeringTurnsOnWhatTheDesktopsSettingsSwitchedOff()
    {
        QFETCH(QByteArray, lines);
        putOwnEntry("Exec=\"" + program().toUtf8() + "\"\n" + lines);
        QCOMPARE(item().status(), Status::RequiresApproval);
        QCOMPARE(item().registerProgram(), LoginItem::Error());
        QCOMPARE(item().status(), Status::Enabled);
    }

    // The system's entry

    void aSystemsEntryCountsWhereTheUserHasNone()
    {
        putSystemEntry("Exec=sh\n");
        QCOMPARE(item().status(), Status::Enabled);
        putOwnEntry("Exec=sh\nHidden=true\n");
        QCOMPARE(item().status(), Status::RequiresApproval);
    }

    void unregisteringHidesASystemsEntryAndRegisteringBringsItBack()
    {
        putSystemEntry("Exec=sh\n");
        QCOMPARE(item().unregisterProgram(), LoginItem::Error());
        QCOMPARE(desktopEntryValues(bytesOf(ownEntry())).value(QStringLiteral("Hidden")),
                 QStringLiteral("true"));
        QCOMPARE(item().status(), Status::NotRegistered);
        QCOMPARE(item().unregisterProgram(), LoginItem::Error());
        QCOMPARE(item().status(), Status::NotRegistered);
        QCOMPARE(item().registerProgram(), LoginItem::Error());
        QCOMPARE(item().status(), Status::Enabled);
    }

    void theDesktopsSettingsCanSwitchOnWhatWeHid()
    {
        putSystemEntry("Exec=sh\n");
        QCOMPARE(item().unregisterProgram(), LoginItem::Error());
        putFile(ownEntry(), bytesOf(ownEntry()).replace("Hidden=true", "Hidden=false"));
        QCOMPARE(item().status(), Status::Enabled);
    }

    // Paths that an Exec line has to quote

    void aPathWithAnyCharactersIsFoundAgain_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"a b", "a\"b", "a'b", "a$HOME`b`", "a\\b", "a\\\\nb", "a\\", "100%f%%",
                                 "a\nb", "a\tb", "鳥 🐦", "a;b&c|d>e~f#g(h)*?"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }

    void aPathWithAnyCharactersIsFoundAgain()
    {
        QFETCH(QString, name);
        putProgram(at(name));
        XdgAutostartLoginItem named(at(name));
        QCOMPARE(named.registerProgram(), LoginItem::Error());
        QCOMPARE(named.status(), Status::Enabled);
        QVERIFY(QFile::remove(at(name)));
        QCOMPARE(named.status(), Status::NotFound);
    }

    void otherProgramsReadTheEntryAsWeMeanIt_data()
    {
        // GLib 2.74 cannot start a program whose path has a percent sign, however the entry is written.
        QTest::addColumn<QString>("name");
        for (const char *name : {"plain", "a b", "a\"b", "a$HOME`b`", "a\\b", "a\\", "a;b&c|d>e~f#g(h)*?"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }

    void otherProgramsReadTheEntryAsWeMeanIt()
    {
        QFETCH(QString, name);
        putProgram(at(name));
        QCOMPARE(XdgAutostartLoginItem(at(name)).registerProgram(), LoginItem::Error());
        QCOMPARE(QProcess::execute(QStringLiteral("desktop-file-validate"), {ownEntry()}), 0);
        const QString started = at(QStringLiteral("started"));
        qputenv("STARTED", QFile::encodeName(started));
        QCOMPARE(QProcess::execute(QStringLiteral("gio"), {QStringLiteral("launch"), ownEntry()}), 0);
        QTRY_VERIFY(QFile::exists(started));
    }

    // What may go wrong

    void aFolderThatCannotBeWrittenIsAnErrorAndLeavesTheEntry()
    {
        QCOMPARE(item().registerProgram(), LoginItem::Error());
        const QByteArray before = bytesOf(ownEntry());
        TestMount mount(ownFolder());
        QCOMPARE(mount.mountReadOnly(), QString());
        const LoginItem::Error registering = XdgAutostartLoginItem(QStringLiteral("/x")).registerProgram();
        QVERIFY(registering && registering->contains(ownFolder()));
        const LoginItem::Error unregistering = item().unregisterProgram();
        QVERIFY(unregistering && unregistering->contains(ownEntry()));
        QCOMPARE(bytesOf(ownEntry()), before);
        QCOMPARE(namesIn(ownFolder()), own());
    }

    void aFolderThatCannotBeMadeIsAnError()
    {
        putFile(at(QStringLiteral("config")), "");
        const LoginItem::Error error = item().registerProgram();
        QVERIFY(error && error->contains(ownFolder()));
        QCOMPARE(item().status(), Status::NotRegistered);
    }

    void aFullDiskIsAnErrorAndLeavesNothing()
    {
        QVERIFY(QDir().mkpath(ownFolder()));
        TestMount mount(ownFolder());
        QCOMPARE(mount.mountMemory(4096), QString());
        putFile(ownFolder() + QStringLiteral("/other"), QByteArray(4096, 'x'));
        QVERIFY(item().registerProgram());
        QCOMPARE(namesIn(ownFolder()), QStringList{QStringLiteral("other")});
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::XdgAutostartLoginItemTest)
#include "xdg_autostart_login_item_test.moc"
