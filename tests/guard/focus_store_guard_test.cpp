// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "support/files.h"
#include "support/test_case.h"

#include <QDir>

#include <sys/stat.h>

namespace wrenfold {

class FocusStoreGuardTest : public TestCase
{
    Q_OBJECT

    QString put(const QString &name, const QByteArray &content)
    {
        const QString path = dataHome() + u'/' + name;
        QDir().mkpath(path.section(u'/', 0, -2));
        putFile(path, content);
        return path;
    }

    static BlockedApp added(const QString &path)
    {
        StoreOnFakes fakes{TaskList{}};
        fakes.store.addBlockedApp(QUrl::fromLocalFile(path));
        return fakes.store.blockedApps.value().last();
    }

private Q_SLOTS:
    void aDesktopEntryGivesItsNameAndItsIdentifier()
    {
        const QString path =
            put(QStringLiteral("applications/org.example.Chat.desktop"),
                "[Desktop Entry]\nType=Application\nName=Chat\nName[ja]=おしゃべり\nExec=chat\n");
        QCOMPARE(added(path), (BlockedApp{QStringLiteral("org.example.Chat"), QStringLiteral("Chat"),
                                          QStringLiteral("org.example.Chat"), path}));
        qputenv("LC_ALL", "ja_JP.UTF-8");
        QCOMPARE(added(path).name, QStringLiteral("おしゃべり"));
        qputenv("LC_ALL", "C.UTF-8");
    }

    void anEntryInASubfolderHasTheFolderInItsIdentifier()
    {
        const QString path = put(QStringLiteral("applications/vendor/chat.desktop"),
                                 "[Desktop Entry]\nType=Application\nName=Chat\n");
        QCOMPARE(added(path).id, QStringLiteral("vendor-chat"));
    }

    void anEntryElsewhereIsKnownByItsFilesName()
    {
        const QString path =
            put(QStringLiteral("chat.desktop"), "[Desktop Entry]\nType=Application\nName=Chat\n");
        QCOMPARE(added(path).bundleIdentifier, QStringLiteral("chat"));
    }

    void whatIsNoEntryIsNamedAfterTheFileAndKeyedByItsPath_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("name");
        QTest::newRow("a program") << QStringLiteral("Notes.app") << QByteArray("x")
                                   << QStringLiteral("Notes");
        QTest::newRow("two dots") << QStringLiteral("Notes 2.1.bin") << QByteArray()
                                  << QStringLiteral("Notes 2.1");
        QTest::newRow("no name") << QStringLiteral("a.desktop")
                                 << QByteArray("[Desktop Entry]\nType=Application\n") << QStringLiteral("a");
        QTest::newRow("a link") << QStringLiteral("b.desktop")
                                << QByteArray("[Desktop Entry]\nType=Link\nName=B\n") << QStringLiteral("b");
        QTest::newRow("no text") << QStringLiteral("c.desktop")
                                 << QByteArray("[Desktop Entry]\nType=Application\nName=\xff\n")
                                 << QStringLiteral("c");
    }
    void whatIsNoEntryIsNamedAfterTheFileAndKeyedByItsPath()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        const QString path = put(file, content);
        QCOMPARE(added(path), (BlockedApp{path, name, std::nullopt, path}));
    }

    void aFolderWithASlashBehindItsNameIsNamedAfterIt()
    {
        const QString folder = dataHome() + QStringLiteral("/Folder.app");
        QVERIFY(QDir().mkpath(folder));
        QCOMPARE(added(folder + u'/'), (BlockedApp{folder, QStringLiteral("Folder"), std::nullopt, folder}));
    }

    void aNameThatBeginsWithItsOnlyDotIsTheWholeName()
    {
        const QString path = put(QStringLiteral(".hidden"), "x");
        QCOMPARE(added(path).name, QStringLiteral(".hidden"));
    }

    void whatIsNoFileIsNotAdded()
    {
        StoreOnFakes fakes{TaskList{}};
        const QList<BlockedApp> before = fakes.store.blockedApps.value();
        fakes.store.addBlockedApp(QUrl(QStringLiteral("https://example.org/app")));
        fakes.store.addBlockedApp({});
        QCOMPARE(fakes.store.blockedApps.value(), before);
    }

    void aFileThatIsNotThereFallsBackToItsName()
    {
        const QString path = dataHome() + QStringLiteral("/gone/Chat.desktop");
        QCOMPARE(added(path), (BlockedApp{path, QStringLiteral("Chat"), std::nullopt, path}));
    }

    void aNamedPipeHoldsNobodyUp()
    {
        const QString path = dataHome() + QStringLiteral("/pipe.desktop");
        QCOMPARE(::mkfifo(path.toUtf8().constData(), 0600), 0);
        QCOMPARE(added(path).name, QStringLiteral("pipe"));
    }

    void addingTheSameTwiceLeavesOneEntryAndSavesOnce()
    {
        StoreOnFakes fakes{TaskList{}};
        const QString path =
            put(QStringLiteral("chat.desktop"), "[Desktop Entry]\nType=Application\nName=Chat\n");
        const qsizetype before = fakes.store.blockedApps.value().size();
        const int saves = fakes.preferences.writeCount();
        fakes.store.addBlockedApp(QUrl::fromLocalFile(path));
        fakes.store.addBlockedApp(QUrl::fromLocalFile(path));
        QCOMPARE(fakes.store.blockedApps.value().size(), before + 1);
        QCOMPARE(fakes.preferences.writeCount(), saves + 1);
    }

    void removingTakesEveryEntryOfTheIdentifierAndSaves()
    {
        StoreOnFakes fakes{TaskList{}};
        const BlockedApp line = fakes.store.blockedApps.value().first();
        const int saves = fakes.preferences.writeCount();
        fakes.store.removeBlockedApp({line.id, QStringLiteral("another name"), std::nullopt, std::nullopt});
        QVERIFY(fakes.store.blockedApps.value().isEmpty());
        QCOMPARE(fakes.preferences.writeCount(), saves + 1);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreGuardTest)
#include "focus_store_guard_test.moc"
