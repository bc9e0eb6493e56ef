// SPDX-License-Identifier: MIT
#include "ai/one_password_items.h"
#include "model/store_on_fakes.h"
#include "support/files.h"
#include "support/log_capture.h"
#include "support/test_case.h"
#include "support/test_mount.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>

namespace wrenfold {

namespace {

const auto busy = QStringLiteral("1Passwordから取得中...");
const auto saved = QStringLiteral("OpenRouter APIキーを保存しました");
const auto failed = QStringLiteral("1Passwordから取得できませんでした");

/// A program called `op` at the front of the search path. It notes its arguments, a line a run, and then does what the
/// test's script says.
class FakeTool
{
public:
    explicit FakeTool(const QByteArray &script)
        : m_pathBefore(qgetenv("PATH"))
    {
        QFile tool(m_folder.filePath(QStringLiteral("op")));
        if (!tool.open(QIODevice::WriteOnly))
            qFatal("the tool cannot be written");
        tool.write("#!/bin/bash\nprintf '%s\\n' \"$*\" >>\"" + log().toUtf8() + "\"\n" + script + "\n");
        tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        tool.close();
        qputenv("PATH", m_folder.path().toUtf8() + ':' + m_pathBefore);
    }
    ~FakeTool() { qputenv("PATH", m_pathBefore); }
    Q_DISABLE_COPY_MOVE(FakeTool)

    [[nodiscard]] QString file(const char *name) const { return m_folder.filePath(QLatin1String(name)); }
    /// Makes the file that the script waits for.
    void letGo(const char *name) const { putFile(file(name), {}); }
    /// The arguments of each run, in one line.
    [[nodiscard]] QStringList runs() const
    {
        QFile file(log());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }

private:
    [[nodiscard]] QString log() const { return m_folder.filePath(QStringLiteral("runs")); }

    QTemporaryDir m_folder;
    QByteArray m_pathBefore;
};

/// Lists one item called after the service, and gives this for it.
QByteArray toolWithItem(const QByteArray &item)
{
    return "case \"$1 $2\" in 'item list') echo '[{\"id\":\"abc\",\"title\":\"OpenRouter\"}]';; 'item get') "
           "echo '" +
           item + "';; *) exit 1;; esac";
}

/// Of two runs at once each waits for a file called as itself; $run is 1 or 2, and empty for every later run.
const QByteArray twoRunsThatWait = R"sh(cd "$(dirname "$0")"
    for i in 1 2; do mkdir taken$i 2>/dev/null && run=$i && break; done
    while [ -n "$run" ] && [ ! -e "$run" ]; do sleep 0.01; done
    )sh";

} // namespace

/// The import of the key with a real child process.
class KeyImportTest : public TestCase
{
    Q_OBJECT

private:
    /// What the import said in the end.
    [[nodiscard]] static QString imported(StoreOnFakes &s)
    {
        s.store.importOpenRouterKeyFromOnePassword();
        if (!QTest::qWaitFor([&] { return s.store.apiImportStatus.value() != busy; }, 20000))
            return QStringLiteral("no end");
        return s.store.apiImportStatus.value();
    }

private Q_SLOTS:
    void theImportReturnsAtOnceAndTellsThatItRuns()
    {
        const FakeTool tool("echo key");
        StoreOnFakes s(TaskList{});
        s.store.importOpenRouterKeyFromOnePassword();
        QCOMPARE(s.store.apiImportStatus.value(), busy);
        QTRY_COMPARE(s.store.apiImportStatus.value(), saved);
    }

    void eachOfTheEightReferencesIsTriedInOrder_data()
    {
        QTest::addColumn<int>("good");
        for (int good = 1; good <= 8; ++good)
            QTest::addRow("the key is in number %d", good) << good;
    }

    void eachOfTheEightReferencesIsTriedInOrder()
    {
        QFETCH(int, good);
        const FakeTool tool("[ $(wc -l <\"$(dirname \"$0\")/runs\") -eq " + QByteArray::number(good) +
                            " ] && echo ' sk-1 ' || exit 1");
        StoreOnFakes s(TaskList{});
        QCOMPARE(imported(s), saved);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-1"));
        QCOMPARE(s.saved().apiKeyOverride, QStringLiteral("sk-1"));
        QStringList expected;
        for (const QString &reference : OnePasswordItems::secretReferences().first(good))
            expected.append(QStringLiteral("read ") + reference);
        QCOMPARE(tool.runs(), expected);
    }

    void aReferenceThatYieldsOnlyWhiteSpaceGivesWayToTheNext()
    {
        const FakeTool tool("[ $(wc -l <\"$(dirname \"$0\")/runs\") -eq 1 ] && echo '  ' || echo sk-2");
        StoreOnFakes s(TaskList{});
        QCOMPARE(imported(s), saved);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-2"));
        QCOMPARE(tool.runs().size(), 2);
    }

    void outputThatIsNoUtf8GivesWayToTheNext()
    {
        const FakeTool tool(
            "[ $(wc -l <\"$(dirname \"$0\")/runs\") -eq 1 ] && printf '\\xff\\xfe' || echo sk-2");
        StoreOnFakes s(TaskList{});
        QCOMPARE(imported(s), saved);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-2"));
    }

    void withoutAReferenceTheItemsAreSearched()
    {
        const FakeTool tool(toolWithItem(R"({"fields":[{"label":"credential","value":"sk-3"}]})"));
        StoreOnFakes s(TaskList{});
        QCOMPARE(imported(s), saved);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-3"));
        QCOMPARE(tool.runs().size(), 10);
        QCOMPARE(tool.runs().at(8), QStringLiteral("item list --format json"));
        QCOMPARE(tool.runs().at(9), QStringLiteral("item get abc --format json --reveal"));
    }

    void anItemWithoutAKeyGivesWayToTheNext()
    {
        const FakeTool tool(R"(case "$1 $2 $3" in
            'item list '*) echo '[{"id":"1","title":"openrouter"},{"id":"2","title":"openrouter"},{"id":"3","title":"openrouter"},{"id":"4","title":"openrouter"}]';;
            'item get 1') exit 1;; 'item get 2') echo nonsense;; 'item get 3') echo '{"fields":[{"label":"api","value":" "}]}';;
            'item get 4') echo '{"fields":[{"label":"api","value":"sk-4"}]}';; *) exit 1;; esac)");
        StoreOnFakes s(TaskList{});
        QCOMPARE(imported(s), saved);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-4"));
    }

    void failuresLeaveTheKeyAsItWas_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("not signed in") << QByteArray("echo 'not signed in' >&2; exit 1");
        QTest::newRow("a key, but a bad status") << QByteArray("echo sk-5; exit 3");
        QTest::newRow("killed") << QByteArray("echo sk-5; kill -9 $$");
        QTest::newRow("no items") << QByteArray("case $1 in item) echo '[]';; *) exit 1;; esac");
        QTest::newRow("a malformed list") << QByteArray("case $1 in item) echo '[{';; *) exit 1;; esac");
        QTest::newRow("an item without a key")
            << toolWithItem(R"({"fields":[{"label":"note","value":"sk-6"}]})");
    }

    void failuresLeaveTheKeyAsItWas()
    {
        QFETCH(QByteArray, script);
        const FakeTool tool(script);
        StoreOnFakes s(TaskList{});
        s.store.apiKeyOverride.set(QStringLiteral("old"));
        QCOMPARE(imported(s), failed);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("old"));
        QCOMPARE(s.saved().apiKeyOverride, QStringLiteral("old"));
    }

    void aMissingToolIsAFailure()
    {
        const QByteArray path = qgetenv("PATH");
        const QTemporaryDir empty;
        qputenv("PATH", empty.path().toUtf8());
        StoreOnFakes s(TaskList{});
        const QString status = imported(s);
        qputenv("PATH", path);
        QCOMPARE(status, failed);
    }

    void aProcessThatCannotBeStartedIsAFailure()
    {
        // `env` itself is out of sight.
        TestMount mount(QStringLiteral("/usr/bin"));
        QCOMPARE(mount.mountMemory(4096), QString());
        QVERIFY(!QFile::exists(QStringLiteral("/usr/bin/env")));
        StoreOnFakes s(TaskList{});
        QCOMPARE(imported(s), failed);
    }

    void aToolThatPrintsTenMegabytesDoesNotStopIt()
    {
        const FakeTool tool(
            "[ $(wc -l <\"$(dirname \"$0\")/runs\") -eq 1 ] || exit 1; "
            "head -c 10000000 /dev/zero >&2; head -c 10000000 /dev/zero | tr '\\0' ' '; echo sk-9");
        StoreOnFakes s(TaskList{});
        QCOMPARE(imported(s), saved);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-9"));
    }

    void theToolFindsNothingOnItsStandardInput()
    {
        const FakeTool tool("read -r line && exit 1; echo sk-7");
        StoreOnFakes s(TaskList{});
        QCOMPARE(imported(s), saved);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-7"));
    }

    void twoImportsAtOnceBothRunToTheirEndAndTheLaterOneDecides()
    {
        const FakeTool tool(twoRunsThatWait + "echo sk-$run");
        StoreOnFakes s(TaskList{});
        QStringList seen;
        const Subscription status =
            s.store.apiImportStatus.onChange([&](const QString &text) { seen << text; });
        s.store.importOpenRouterKeyFromOnePassword();
        s.store.importOpenRouterKeyFromOnePassword();
        QTRY_COMPARE(tool.runs().size(), 2);
        tool.letGo("2");
        QTRY_COMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-2"));
        QCOMPARE(s.store.apiImportStatus.value(), saved);
        tool.letGo("1");
        QTRY_COMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-1"));
        QCOMPARE(s.saved().apiKeyOverride, QStringLiteral("sk-1"));
        QCOMPARE(tool.runs().size(), 2);
        QCOMPARE(seen, (QStringList{busy, saved}));
    }

    void aLaterFailureLeavesTheKeyOfTheImportThatSucceeded()
    {
        const FakeTool tool(twoRunsThatWait + "[ $run = 2 ] && echo sk-2 || exit 1");
        StoreOnFakes s(TaskList{});
        QStringList seen;
        const Subscription status =
            s.store.apiImportStatus.onChange([&](const QString &text) { seen << text; });
        s.store.importOpenRouterKeyFromOnePassword();
        s.store.importOpenRouterKeyFromOnePassword();
        QTRY_COMPARE(tool.runs().size(), 2);
        tool.letGo("2");
        QTRY_COMPARE(s.store.apiImportStatus.value(), saved);
        tool.letGo("1");
        QTRY_COMPARE(s.store.apiImportStatus.value(), failed);
        QCOMPARE(s.store.apiKeyOverride.value(), QStringLiteral("sk-2"));
        QCOMPARE(s.saved().apiKeyOverride, QStringLiteral("sk-2"));
        QCOMPARE(seen, (QStringList{busy, saved, failed}));
    }

    void theKeyIsInNoLog_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("end");
        QTest::newRow("found") << QByteArray("echo sk-secret; echo sk-secret >&2") << saved;
        QTest::newRow("in an item") << toolWithItem(R"({"fields":[{"label":"api","value":"sk-secret"}]})")
                                    << saved;
        QTest::newRow("bad status") << QByteArray("echo sk-secret; echo sk-secret >&2; exit 1") << failed;
        QTest::newRow("malformed") << QByteArray("case $1 in item) echo '[{\"sk-secret\"';; *) exit 1;; esac")
                                   << failed;
    }

    void theKeyIsInNoLog()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, end);
        const FakeTool tool(script);
        qputenv("WRENFOLD_DEBUG", "1");
        QLoggingCategory::setFilterRules(QStringLiteral("*=true"));
        LogCapture log;
        QString status;
        {
            StoreOnFakes s(TaskList{});
            status = imported(s);
        }
        const QStringList lines = log.take();
        QLoggingCategory::setFilterRules({});
        qunsetenv("WRENFOLD_DEBUG");
        QCOMPARE(status, end);
        QVERIFY(!lines.isEmpty()); // It is logged that the document was loaded, at least.
        QVERIFY2(!lines.join(u'\n').contains(QStringLiteral("sk-secret")), qPrintable(lines.join(u'\n')));
    }

    void aStoreThatGoesEndsTheTool()
    {
        const FakeTool tool("echo $$ >\"$(dirname \"$0\")/pid\"; exec sleep 1000");
        pid_t process = 0;
        {
            StoreOnFakes s(TaskList{});
            s.store.importOpenRouterKeyFromOnePassword();
            const auto read = [&] {
                QFile pid(tool.file("pid"));
                process = pid.open(QIODevice::ReadOnly) ? pid.readAll().trimmed().toInt() : 0;
                return process;
            };
            QTRY_VERIFY(read() > 0);
        }
        QTRY_COMPARE(::kill(process, 0), -1);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::KeyImportTest)
#include "key_import_test.moc"
