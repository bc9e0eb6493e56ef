// SPDX-License-Identifier: MIT
#include "platform/linux/canberra_sounds.h"
#include "support/test_case.h"

#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace wrenfold {
namespace {

/// What the functions of the library were told, and what they are to answer.
class FakeServer
{
public:
    struct Playing
    {
        ca_finish_callback_t finished;
        void *userData;
    };

    int connect()
    {
        const std::scoped_lock lock(m_mutex);
        ++m_connections;
        m_isConnected = true;
        return CA_SUCCESS;
    }

    int disconnect()
    {
        for (const Playing &sound : takePlaying())
            sound.finished(nullptr, 0, CA_ERROR_DESTROYED, sound.userData);
        const std::scoped_lock lock(m_mutex);
        m_isConnected = false;
        return CA_SUCCESS;
    }

    int play(const Playing &sound)
    {
        const std::scoped_lock lock(m_mutex);
        ++m_asked;
        if (m_answer == CA_SUCCESS)
            m_playing.push_back(sound);
        return m_answer;
    }

    void setAnswer(int answer)
    {
        const std::scoped_lock lock(m_mutex);
        m_answer = answer;
    }

    /// The sound that plays longest ends.
    void endOne()
    {
        std::unique_lock lock(m_mutex);
        const Playing sound = m_playing.front();
        m_playing.erase(m_playing.begin());
        lock.unlock();
        sound.finished(nullptr, 0, CA_SUCCESS, sound.userData);
    }

    [[nodiscard]] int connections() { return locked(m_connections); }
    [[nodiscard]] bool isConnected() { return locked(m_isConnected); }
    [[nodiscard]] int asked() { return locked(m_asked); }

private:
    template<typename Value>
    Value locked(const Value &value)
    {
        const std::scoped_lock lock(m_mutex);
        return value;
    }

    std::vector<Playing> takePlaying()
    {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_playing, {});
    }

    std::mutex m_mutex;
    std::vector<Playing> m_playing;
    int m_answer = CA_SUCCESS;
    int m_connections = 0;
    int m_asked = 0;
    bool m_isConnected = false;
};

FakeServer *server = nullptr;

int changeNothing(ca_context * /*context*/, ...)
{
    return CA_SUCCESS;
}

/// The library, as far as it is used, that plays on the server above.
const CanberraLibrary *fakeLibrary()
{
    static const CanberraLibrary library = {
        [](ca_context **context) {
            *context = reinterpret_cast<ca_context *>(server);
            return server->connect();
        },
        [](ca_context *) { return server->disconnect(); },
        changeNothing,
        [](ca_context *, uint32_t, ca_proplist *, ca_finish_callback_t finished, void *userData) {
            return server->play({finished, userData});
        },
        [](ca_proplist **) -> int { return CA_SUCCESS; },
        [](ca_proplist *) -> int { return CA_SUCCESS; },
        [](ca_proplist *, const char *, const char *) -> int { return CA_SUCCESS; },
    };
    return &library;
}

} // namespace

/// How long the way to the audio server stays open.
class SoundConnectionTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_server.emplace();
        server = &*m_server;
    }

    void itOpensWithASoundAndClosesAfterTheLastOne()
    {
        CanberraSounds sounds(fakeLibrary);
        QCOMPARE(m_server->connections(), 0);
        sounds.play(Sound::Glass);
        sounds.play(Sound::Tink);
        QTRY_COMPARE(m_server->asked(), 2);
        m_server->endOne();
        QVERIFY2(!QTest::qWaitFor([this] { return !m_server->isConnected(); }, 200), "one still plays");
        QCOMPARE(m_server->connections(), 1);
        m_server->endOne();
        QTRY_VERIFY(!m_server->isConnected());
    }

    void itOpensAnewForALaterSound()
    {
        CanberraSounds sounds(fakeLibrary);
        for (int round = 1; round <= 2; ++round) {
            sounds.play(Sound::Glass);
            QTRY_COMPARE(m_server->asked(), round);
            QCOMPARE(m_server->connections(), round);
            m_server->endOne();
            QTRY_VERIFY(!m_server->isConnected());
        }
    }

    void itClosesWhenASoundFailsAndOpensForTheNext()
    {
        CanberraSounds sounds(fakeLibrary);
        m_server->setAnswer(CA_ERROR_IO);
        sounds.play(Sound::Glass);
        QTRY_COMPARE(m_server->asked(), 1);
        QTRY_VERIFY(!m_server->isConnected());
        m_server->setAnswer(CA_SUCCESS);
        sounds.play(Sound::Glass);
        QTRY_COMPARE(m_server->asked(), 2);
        QVERIFY(m_server->isConnected());
        m_server->endOne();
        QTRY_VERIFY(!m_server->isConnected());
    }

    void aFailureCutsOffWhatPlaysAndTheNextSoundIsCountedFromNone()
    {
        CanberraSounds sounds(fakeLibrary);
        sounds.play(Sound::Glass);
        QTRY_COMPARE(m_server->asked(), 1);
        m_server->setAnswer(CA_ERROR_IO);
        sounds.play(Sound::Tink);
        QTRY_VERIFY(!m_server->isConnected());
        m_server->setAnswer(CA_SUCCESS);
        sounds.play(Sound::Funk);
        QTRY_COMPARE(m_server->asked(), 3);
        QVERIFY(m_server->isConnected());
        m_server->endOne();
        QTRY_VERIFY(!m_server->isConnected());
    }

    void withoutTheLibraryThereIsSilence()
    {
        CanberraSounds sounds([]() -> const CanberraLibrary * { return nullptr; });
        for (int count = 0; count < 10; ++count)
            sounds.play(Sound::Glass);
        QCOMPARE(m_server->connections(), 0);
    }

    void theEndOfTheProgramCutsOffWhatPlays()
    {
        {
            CanberraSounds sounds(fakeLibrary);
            sounds.play(Sound::Glass);
            QTRY_COMPARE(m_server->asked(), 1);
        }
        QVERIFY(!m_server->isConnected());
    }

private:
    std::optional<FakeServer> m_server;
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::SoundConnectionTest)
#include "sound_connection_test.moc"
