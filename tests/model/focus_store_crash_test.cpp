// SPDX-License-Identifier: MIT
#include "model/focus_store.h"
#include "platform/linux/file_preferences.h"
#include "platform/system_clock.h"
#include "support/files.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <csignal>
#include <unistd.h>

namespace wrenfold {

namespace {

QByteArray digestOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

/// Says on standard output what is about to be written ("begun <digest>") and what has been ("done <digest>").
class TellingPreferences final : public Preferences
{
public:
    explicit TellingPreferences(Preferences &preferences)
        : m_preferences(preferences)
    {
    }

    ReadResult read(const QString &key) const override { return m_preferences.read(key); }
    std::optional<QString> keepAside(const QString &key) override { return m_preferences.keepAside(key); }
    std::optional<QString> write(const QString &key, const QByteArray &bytes) override
    {
        tell("begun", bytes);
        const std::optional<QString> error = m_preferences.write(key, bytes);
        if (error)
            qFatal("a save failed: %s", qPrintable(*error));
        tell("done", bytes);
        return error;
    }

private:
    static void tell(const char *what, const QByteArray &bytes)
    {
        const QByteArray line = QByteArray(what) + ' ' + digestOf(bytes) + '\n';
        if (::write(STDOUT_FILENO, line.constData(), size_t(line.size())) != line.size())
            qFatal("nobody listens");
    }

    Preferences &m_preferences;
};

/// Changes the list without end, every change saved in the folder.
[[noreturn]] void storm(const QString &folder, quint32 seed)
{
    QRandomGenerator random(seed);
    SystemClock clock;
    FilePreferences files(folder, clock);
    TellingPreferences preferences(files);
    QuietServices quiet;
    FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
    for (;;) {
        const TaskList tasks = store.tasks.value();
        if (tasks.size() < 5 || (tasks.size() < 200 && random.bounded(3) == 0)) {
            store.addTask(QStringLiteral("作業 %1").arg(random.generate()), random.bounded(2) == 0);
            continue;
        }
        const TaskItem task = tasks[random.bounded(int(tasks.size()))];
        const TaskItem other = tasks[random.bounded(int(tasks.size()))];
        switch (random.bounded(7)) {
        case 0:
            store.addSubtask(task.id, QStringLiteral("小さな作業"));
            break;
        case 1:
            store.toggleDone(task);
            break;
        case 2:
            store.deleteTask(task);
            break;
        case 3:
            store.moveTask(task.id, other.id, true);
            break;
        case 4:
            store.deferTask(task, TaskQuadrant::urgentImportant);
            break;
        case 5:
            store.undo();
            break;
        default:
            store.updateTaskTitle(task, QString(random.bounded(2000), QLatin1Char('x')));
        }
    }
}

} // namespace

class FocusStoreCrashTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    /// Each kill is followed by a start on what it left, so the document also outlives all of them in a row.
    void aKillAtAnyMomentLeavesTheLastDocumentOrTheOneInFlight()
    {
        constexpr int kills = WRENFOLD_CRASH_TEST_KILLS;
        const QTemporaryDir folder;
        const auto seed = QRandomGenerator::global()->generate();
        qInfo("seed %u", seed);
        QRandomGenerator random(seed);
        int killedInFlight = 0;
        for (int kill = 0; kill < kills; ++kill) {
            const Outcome outcome = stormAndKill(folder.path(), random);
            QVERIFY2(!outcome.done.isEmpty(), "the storm has saved nothing");
            const QByteArray document = bytesOf(folder.filePath(FocusStore::storageKey()));
            QVERIFY2(decodeSavedState(document), "the document does not decode");
            const QByteArray digest = digestOf(document);
            QVERIFY2(digest == outcome.done || digest == outcome.begun,
                     "the document is none that was to be saved");
            killedInFlight += outcome.begun != outcome.done ? 1 : 0;
        }
        qInfo("%d kills, %d of them in the middle of a save", kills, killedInFlight);
        QVERIFY2(killedInFlight > kills / 20, "hardly a kill has hit a save, which proves little");
    }

private:
    struct Outcome
    {
        QByteArray begun; ///< The digest of the last document whose saving had begun.
        QByteArray done;  ///< The digest of the last one that was acknowledged.
    };

    static Outcome stormAndKill(const QString &folder, QRandomGenerator &random)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.info=false"));
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--storm"), folder, QString::number(random.generate())});
        // After so many lines, at no particular point of the save that follows.
        const int linesBeforeKill = 2 + random.bounded(40);
        QByteArray output;
        while (output.count('\n') < linesBeforeKill && process.waitForReadyRead())
            output += process.readAllStandardOutput();
        const QDeadlineTimer moment(std::chrono::microseconds(random.bounded(3000)), Qt::PreciseTimer);
        while (!moment.hasExpired()) {
        }
        ::kill(pid_t(process.processId()), SIGKILL);
        process.waitForFinished();
        output += process.readAllStandardOutput();
        return outcomeOf(output);
    }

    static Outcome outcomeOf(const QByteArray &output)
    {
        Outcome outcome;
        for (const QByteArray &line : output.split('\n')) {
            if (line.startsWith("begun "))
                outcome.begun = line.mid(6);
            else if (line.startsWith("done "))
                outcome.done = line.mid(5);
        }
        return outcome;
    }
};

} // namespace wrenfold

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--storm"))
        wrenfold::storm(arguments.value(2), arguments.value(3).toUInt());
    wrenfold::FocusStoreCrashTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "focus_store_crash_test.moc"
