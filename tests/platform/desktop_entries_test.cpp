// SPDX-License-Identifier: MIT
#include "platform/desktop_entries.h"
#include "platform/installed_applications.h"
#include "support/files.h"
#include "support/test_case.h"

#include <QDir>
#include <QSignalSpy>

namespace wrenfold {

namespace {

const QByteArray head = "[Desktop Entry]\nType=Application\n";

std::optional<DesktopEntry> parsed(const QByteArray &lines, const QString &locale = {})
{
    return DesktopEntry::parse(head + lines, locale);
}

DesktopEntry entry(const QString &id, const QString &windowClass = {}, const QString &program = {})
{
    DesktopEntry entry;
    entry.id = id;
    entry.name = QStringLiteral("name of ") + id;
    entry.startupWMClass = windowClass;
    entry.program = program;
    return entry;
}

WindowIdentity window(const QString &windowClass, const QString &instance = {}, const QString &program = {})
{
    WindowIdentity identity;
    identity.windowClass = windowClass;
    identity.windowInstance = instance;
    identity.program = program;
    return identity;
}

} // namespace

class DesktopEntriesTest : public TestCase
{
    Q_OBJECT

    void put(const QString &name, const QByteArray &lines)
    {
        const QString path = dataHome() + QStringLiteral("/applications/") + name;
        QDir().mkpath(path.section(u'/', 0, -2));
        putFile(path, head + lines);
    }

private Q_SLOTS:
    void theNameIsTheOneOfTheLocaleElseTheLanguagesElseThePlainOne()
    {
        const QByteArray names =
            "Name=plain\nName[ja]=ja\nName[ja_JP]=ja_JP\nName[sr@latin]=sr@latin\nName[fr]= \n";
        QCOMPARE(parsed(names, QStringLiteral("ja_JP"))->name, QStringLiteral("ja_JP"));
        QCOMPARE(parsed(names, QStringLiteral("ja_XX"))->name, QStringLiteral("ja"));
        QCOMPARE(parsed(names, QStringLiteral("ja"))->name, QStringLiteral("ja"));
        QCOMPARE(parsed(names, QStringLiteral("sr_RS@latin"))->name, QStringLiteral("sr@latin"));
        QCOMPARE(parsed(names, QStringLiteral("fr"))->name, QStringLiteral("plain"));
        QCOMPARE(parsed(names, QStringLiteral("C"))->name, QStringLiteral("plain"));
        QCOMPARE(parsed(names, {})->name, QStringLiteral("plain"));
    }

    void theLocaleComesFromTheEnvironment()
    {
        qputenv("LC_ALL", "sr_RS.UTF-8@latin");
        QCOMPARE(messagesLocale(), QStringLiteral("sr_RS@latin"));
        qputenv("LC_ALL", "C.UTF-8");
        QCOMPARE(messagesLocale(), QStringLiteral("C"));
    }

    void onlyTheEntrysGroupIsRead()
    {
        QCOMPARE(parsed("Name=a\n[Desktop Action New]\nName=b\nExec=c\n")->name, QStringLiteral("a"));
        QVERIFY(!DesktopEntry::parse("Name=a\nType=Application\n", {}));
        QVERIFY(!DesktopEntry::parse("[Other]\nName=a\nType=Application\n", {}));
    }

    void commentsBlankLinesAndBlanksDoNotCount()
    {
        const auto entry = parsed("\n# Name=no\n  Name = a\\sb \r\nStartupWMClass= X\n=none\nnothing\n");
        QCOMPARE(entry->name, QStringLiteral("a b"));
        QCOMPARE(entry->startupWMClass, QStringLiteral("X"));
    }

    void whatIsNoApplicationIsNothing()
    {
        QVERIFY(!DesktopEntry::parse("[Desktop Entry]\nType=Link\nName=a\n", {}));
        QVERIFY(!DesktopEntry::parse("[Desktop Entry]\nName=a\n", {}));
        QVERIFY(!parsed("Name=\n"));
        QVERIFY(!parsed("Name=\xff\n"));
        QVERIFY(!DesktopEntry::parse({}, {}));
    }

    void anEntrySaysWhereItLiesAndWhichIconItNames()
    {
        put(QStringLiteral("vendor/chat.desktop"), "Name=Chat\nIcon=chat\nIcon[ja]= /opt/ja.png \n");
        const QString path = dataHome() + QStringLiteral("/applications/vendor/chat.desktop");
        qputenv("LC_ALL", "C.UTF-8");
        QCOMPARE(readDesktopEntry(path)->path, path);
        QCOMPARE(readDesktopEntry(path)->icon, QStringLiteral("chat"));
        qputenv("LC_ALL", "ja_JP.UTF-8");
        QCOMPARE(readDesktopEntry(path)->icon, QStringLiteral("/opt/ja.png"));
        qputenv("LC_ALL", "C.UTF-8");
        QCOMPARE(parsed("Name=a\n")->icon, QString());
        QCOMPARE(parsed("Name=a\n")->path, QString());
    }

    void theProgramIsTheFirstWordOfTheCommandThatIsOne_data()
    {
        QTest::addColumn<QByteArray>("exec");
        QTest::addColumn<QString>("program");
        QTest::newRow("name") << QByteArray("xterm %u") << QStringLiteral("xterm");
        QTest::newRow("path") << QByteArray("/usr/bin/xterm") << QStringLiteral("xterm");
        QTest::newRow("quoted") << QByteArray("\"/opt/my app/bin/my \\\\\"app\" --x")
                                << QStringLiteral("my \"app");
        QTest::newRow("environment") << QByteArray("env A=b C=d chat --x") << QStringLiteral("chat");
        QTest::newRow("nothing") << QByteArray("  ") << QString();
        QTest::newRow("open quote") << QByteArray("\"a b") << QStringLiteral("a b");
    }
    void theProgramIsTheFirstWordOfTheCommandThatIsOne()
    {
        QFETCH(QByteArray, exec);
        QFETCH(QString, program);
        QCOMPARE(parsed("Name=a\nExec=" + exec + "\n")->program, program);
    }

    void whatAWindowSaysMostPlainlyCounts()
    {
        const DesktopEntries entries({entry(QStringLiteral("by.program"), {}, QStringLiteral("prog")),
                                      entry(QStringLiteral("org.example.last")),
                                      entry(QStringLiteral("instance")), entry(QStringLiteral("klass")),
                                      entry(QStringLiteral("by.wmclass"), QStringLiteral("Klass")),
                                      entry(QStringLiteral("kde.id")), entry(QStringLiteral("gtk.id"))});
        const auto idOf = [&](const WindowIdentity &identity) { return entries.find(identity)->id; };
        WindowIdentity identity =
            window(QStringLiteral("KLASS"), QStringLiteral("INSTANCE"), QStringLiteral("PROG"));
        QCOMPARE(idOf(identity), QStringLiteral("by.wmclass"));
        identity.desktopFile = QStringLiteral("/usr/share/applications/KDE.id.desktop");
        QCOMPARE(idOf(identity), QStringLiteral("kde.id"));
        identity.gtkApplicationID = QStringLiteral("GTK.ID");
        QCOMPARE(idOf(identity), QStringLiteral("gtk.id"));
        QCOMPARE(idOf(window({}, QStringLiteral("Klass"))), QStringLiteral("by.wmclass"));
        QCOMPARE(idOf(window(QStringLiteral("none"), QStringLiteral("Instance"))),
                 QStringLiteral("instance"));
        QCOMPARE(idOf(window(QStringLiteral("Last"))), QStringLiteral("org.example.last"));
        QCOMPARE(idOf(window(QStringLiteral("none"), {}, QStringLiteral("Prog"))),
                 QStringLiteral("by.program"));
        QVERIFY(!entries.find(window(QStringLiteral("none"))));
        QVERIFY(!entries.find({}));
    }

    void whatRunsAnythingTellsNoApplication()
    {
        const DesktopEntries entries({entry(QStringLiteral("a"), {}, QStringLiteral("python3")),
                                      entry(QStringLiteral("b"), {}, QStringLiteral("flatpak"))});
        QVERIFY(!entries.find(window({}, {}, QStringLiteral("python3"))));
        QVERIFY(!entries.find(window({}, {}, QStringLiteral("flatpak"))));
    }

    void ofTwoThatClaimAWindowTheDisplayedOneCountsThenTheFirst()
    {
        DesktopEntry hidden = entry(QStringLiteral("a"), QStringLiteral("X"));
        hidden.isDisplayed = false;
        const DesktopEntries entries({hidden, entry(QStringLiteral("b"), QStringLiteral("X")),
                                      entry(QStringLiteral("c"), QStringLiteral("X"))});
        QCOMPARE(entries.find(window(QStringLiteral("x")))->id, QStringLiteral("b"));
        QVERIFY(!parsed("Name=a\nNoDisplay=true\n")->isDisplayed);
        QVERIFY(!parsed("Name=a\nHidden=true\n")->isDisplayed);
        QVERIFY(parsed("Name=a\nNoDisplay=false\n")->isDisplayed);
    }

    void anApplicationWithoutAnEntryIsCalledWhatItsWindowSays()
    {
        const DesktopEntries none;
        QCOMPARE(none.application(window(QStringLiteral("XTerm"), QStringLiteral("xterm"))),
                 (RunningApplication{std::nullopt, QStringLiteral("XTerm")}));
        QCOMPARE(none.application(window({}, {}, QStringLiteral("prog"))),
                 (RunningApplication{std::nullopt, QStringLiteral("prog")}));
        QCOMPARE(none.application({}), RunningApplication{});
        const DesktopEntries one({entry(QStringLiteral("xterm"))});
        QCOMPARE(one.application(window(QStringLiteral("XTerm"))),
                 (RunningApplication{QStringLiteral("xterm"), QStringLiteral("name of xterm")}));
    }

    void theInstalledApplicationsAreReadInTheBackgroundAndAgainWhenTheyChange()
    {
        put(QStringLiteral("vendor/chat.desktop"), "Name=Chat\n");
        put(QStringLiteral("note.txt"), "Name=No\n");
        InstalledApplications installed;
        QSignalSpy loaded(&installed, &InstalledApplications::loaded);
        installed.refresh();
        QVERIFY(!installed.isLoaded());
        QVERIFY(loaded.wait());
        QVERIFY(installed.entries().find(window(QStringLiteral("vendor-chat"))));
        installed.refresh();
        QVERIFY(!installed.entries().find(window(QStringLiteral("mail"))));

        put(QStringLiteral("vendor/mail.desktop"), "Name=Mail\nStartupWMClass=mail\n");
        QTRY_VERIFY((installed.refresh(), installed.entries().find(window(QStringLiteral("mail")))));
    }

    void theUsersOwnEntryHidesTheSystems()
    {
        const QString system = dataHome() + QStringLiteral("/system");
        QDir().mkpath(system + QStringLiteral("/applications"));
        putFile(system + QStringLiteral("/applications/chat.desktop"),
                head + "Name=System\nStartupWMClass=Chat\n");
        put(QStringLiteral("chat.desktop"), "Name=Mine\nStartupWMClass=Chat\n");
        qputenv("XDG_DATA_DIRS", system.toUtf8());
        InstalledApplications installed;
        QSignalSpy loaded(&installed, &InstalledApplications::loaded);
        installed.refresh();
        QVERIFY(loaded.wait());
        qunsetenv("XDG_DATA_DIRS");
        QCOMPARE(installed.entries().find(window(QStringLiteral("chat")))->name, QStringLiteral("Mine"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DesktopEntriesTest)
#include "desktop_entries_test.moc"
