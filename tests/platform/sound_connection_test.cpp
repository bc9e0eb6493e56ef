// SPDX-License-Identifier: MIT
#include "platform/linux/canberra_sounds.h"
#include "support/test_case.h"

#include <canberra.h>

#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace wrenfold {
namespace {

/// What the functions of the library, which this program defines itself, were told, and what they are to answer.
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

} // namespace
} // namespace wrenfold

extern "C" {

int ca_context_create(ca_context **context)
{
    *context = reinterpret_cast<ca_context *>(wrenfold::server);
    return wrenfold::server->connect();
}

int ca_context_destroy(ca_context *)
{
    return wrenfold::server->disconnect();
}

int ca_context_change_props(ca_context *, ...)
{
    return CA_SUCCESS;
}

int ca_context_play_full(ca_context *, uint32_t, ca_proplist *, ca_finish_callback_t finished, void *userData)
{
    return wrenfold::server->play({finished, userData});
}

} // extern "C"

namespace wrenfold {

/// How long the way to the audio server stays open. The library's functions are this program's own.
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
        CanberraSounds sounds;
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
        CanberraSounds sounds;
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
        CanberraSounds sounds;
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
        CanberraSounds sounds;
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

    void theEndOfTheProgramCutsOffWhatPlays()
    {
        {
            CanberraSounds sounds;
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
