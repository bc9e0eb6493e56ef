// SPDX-License-Identifier: MIT
#include "platform/linux/canberra_sounds.h"
#include "support/fake_sounds.h"
#include "support/test_case.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTemporaryDir>

namespace wrenfold {

/// The real sounds, on a machine with or without a device, and the fake. What is heard, nobody here can tell.
class SoundsTest : public TestCase
{
    Q_OBJECT

private:
    static constexpr std::array allSounds = {Sound::Tink, Sound::Glass, Sound::Funk, Sound::Notification};

private Q_SLOTS:
    void cleanup()
    {
        for (const char *variable :
             {"CANBERRA_DRIVER", "PULSE_SERVER", "PULSE_CLIENTCONFIG", "XDG_DATA_DIRS"})
            qunsetenv(variable);
    }

    void theFakeCountsWhatItIsGiven()
    {
        FakeSounds sounds;
        for (const Sound sound : allSounds)
            sounds.play(sound);
        QCOMPARE(sounds.take(), QList<Sound>(allSounds.begin(), allSounds.end()));
        QCOMPARE(sounds.take(), QList<Sound>());
    }

    void eachSoundIsADifferentOneOfTheFreedesktopTheme()
    {
        QStringList names;
        for (const Sound sound : allSounds) {
            const QString name = QString::fromLatin1(CanberraSounds::eventName(sound));
            const QFileInfo file(QStringLiteral("/usr/share/sounds/freedesktop/stereo/%1.oga").arg(name));
            QVERIFY2(file.exists(), qPrintable(name));
            QVERIFY2(file.size() < 50000, "it is not short");
            QVERIFY(!names.contains(name));
            names << name;
        }
    }

    void whereverItPlaysNothingFails_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("no such driver") << QByteArray("CANBERRA_DRIVER") << QByteArray("none-such");
        QTest::newRow("no device") << QByteArray("CANBERRA_DRIVER") << QByteArray("alsa");
        QTest::newRow("no theme") << QByteArray("XDG_DATA_DIRS") << QByteArray("/nowhere");
    }

    void whereverItPlaysNothingFails()
    {
        QFETCH(QByteArray, variable);
        QFETCH(QByteArray, value);
        qputenv(variable.constData(), value);
        for (int round = 0; round < 2; ++round) { // The second time after a failure, if there was one.
            CanberraSounds sounds;
            for (const Sound sound : allSounds)
                sounds.play(sound);
        }
    }

    void aSoundReachesTheDevice()
    {
        // A device that writes what it is given into a file.
        const QTemporaryDir home;
        const QString file = home.filePath(QStringLiteral("heard"));
        QFile settings(home.filePath(QStringLiteral(".asoundrc")));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write("pcm.!default { type file slave.pcm null file \"" + file.toUtf8() +
                       "\" format raw }\n");
        settings.close();
        const auto threadCount = [] { return QDir(QStringLiteral("/proc/self/task")).count(); };
        const auto threadsBefore = threadCount();
        const QByteArray homeBefore = qgetenv("HOME");
        qputenv("HOME", home.path().toUtf8());
        qputenv("CANBERRA_DRIVER", "alsa");

        {
            CanberraSounds sounds;
            sounds.play(Sound::Glass);
            QTRY_VERIFY2(QFileInfo(file).size() > 0, "nothing was played");
        }
        // A slow machine's last sound may still be writing there, and its thread may read the environment.
        QTRY_VERIFY2(threadCount() <= threadsBefore, "the sounds' thread does not end");
        qputenv("HOME", homeBefore);
    }

    void aRunWithoutSoundsEndsAtOnce() { const CanberraSounds sounds; }

    void anAudioServerThatHangsHoldsUpNeitherTheCallNorTheEnd()
    {
        const QTemporaryDir folder;
        QLocalServer server; // Takes connections and says nothing.
        QVERIFY(server.listen(folder.filePath(QStringLiteral("audio"))));
        qputenv("CANBERRA_DRIVER", "pulse");
        qputenv("PULSE_SERVER", "unix:" + server.fullServerName().toUtf8());

        QElapsedTimer time;
        {
            CanberraSounds sounds;
            time.start();
            for (int round = 0; round < 100; ++round)
                sounds.play(Sound::Glass);
            QVERIFY2(time.elapsed() < 200, qPrintable(QString::number(time.elapsed())));
            // It is really asked, and waits for an answer.
            QVERIFY(server.waitForNewConnection(10000));
            time.restart();
        }
        QVERIFY2(time.elapsed() < 2000, qPrintable(QString::number(time.elapsed())));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::SoundsTest)
#include "sounds_test.moc"
