// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "app/launch_options.h"
#include "app/wrenfold_main.h"
#include "support/test_case.h"

#include <QDirIterator>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace wrenfold {

namespace {

constexpr auto verdict = R"({
    "contains_child": true,
    "contains_completed": true,
    "count": 4,
    "titles": [
        "second open",
        "first open",
        "child under first",
        "completed task"
    ]
}
)";

/// What a run of the program came to.
struct Run
{
    int status = -1; ///< Minus one when it did not end by itself.
    QByteArray output;
    QByteArray errors;
    QStringList filesBelowHome;
};

QStringList everythingBelow(const QString &folder)
{
    QStringList paths;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        paths.append(it.next());
    return paths;
}

QString program()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../wrenfold");
}

/// Runs the program without display, without bus, with an empty home and nothing else in its environment.
Run run(const QStringList &arguments, const QProcessEnvironment &more = {})
{
    const QTemporaryDir home;
    QProcessEnvironment environment = more;
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));

    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program(), arguments);
    Run run;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    run.filesBelowHome = everythingBelow(home.path());
    return run;
}

Run run(const char *arguments)
{
    return run(QString::fromUtf8(arguments).split(QLatin1Char(' ')));
}

} // namespace

class DebugCommandsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theSelfCheckPrintsItsVerdict()
    {
        const Run run = wrenfold::run("--debug-preserve-completed");
        QCOMPARE(run.output, QByteArray(verdict));
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.filesBelowHome, QStringList());
    }

    void theSelfCheckRunsWhereverItsNameStands()
    {
        const Run run = wrenfold::run("--help --verbose --debug-preserve-completed --goal");
        QCOMPARE(run.output, QByteArray(verdict));
        QCOMPARE(run.status, 0);
    }

    void verboseRunsPrintTheSameVerdict()
    {
        QProcessEnvironment verbose;
        verbose.insert(QStringLiteral("WRENFOLD_DEBUG"), QStringLiteral("1"));
        const Run run = wrenfold::run({QStringLiteral("--debug-preserve-completed")}, verbose);
        QCOMPARE(run.output, QByteArray(verdict));
        QCOMPARE(run.status, 0);
    }

    void verboseIsSeenByTheDebugCommands()
    {
        QByteArray program = "wrenfold";
        QByteArray command = "--debug-preserve-completed";
        QByteArray verbose = "--verbose";
        std::array arguments = {program.data(), command.data(), verbose.data(), static_cast<char *>(nullptr)};
        DebugLog::setArguments({});
        QVERIFY(!DebugLog::isVerbose());

        const QtMessageHandler handler = qInstallMessageHandler(nullptr);
        const int status = WrenfoldMain::main(3, arguments.data());
        qInstallMessageHandler(handler);

        QCOMPARE(status, 0);
        QVERIFY(DebugLog::isVerbose());
        DebugLog::setArguments({});
    }

    void usageErrorsAreExact_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QByteArray>("errors");

        const QByteArray split = "--debug-split requires a task title\n";
        const QByteArray sort = "--debug-sort requires at least two task titles\n";
        QTest::newRow("split as the last argument") << QStringLiteral("--debug-split") << split;
        QTest::newRow("split behind a goal") << QStringLiteral("--goal G --debug-split") << split;
        QTest::newRow("split without a title behind a sort")
            << QStringLiteral("--debug-sort A B --debug-split") << split;
        QTest::newRow("sort without titles") << QStringLiteral("--debug-sort") << sort;
        QTest::newRow("sort with one title") << QStringLiteral("--debug-sort A") << sort;
        QTest::newRow("sort A --goal G B") << QStringLiteral("--debug-sort A --goal G B") << sort;
        QTest::newRow("sort before --help") << QStringLiteral("--debug-sort A --help") << sort;
    }

    void usageErrorsAreExact()
    {
        QFETCH(QString, arguments);
        QFETCH(QByteArray, errors);
        const Run run = wrenfold::run(arguments.split(QLatin1Char(' ')));
        QCOMPARE(run.errors, errors);
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.status, 2);
        QCOMPARE(run.filesBelowHome, QStringList());
    }

    void onlyTheSplitRunsWhereBothAreNamed_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::newRow("split first") << QStringLiteral("--debug-split X --debug-sort A B");
        QTest::newRow("sort first") << QStringLiteral("--debug-sort A B --debug-split X");
        QTest::newRow("a task called --help") << QStringLiteral("--debug-split --help");
    }

    void onlyTheSplitRunsWhereBothAreNamed()
    {
        QFETCH(QString, arguments);
        const Run run = wrenfold::run(arguments.split(QLatin1Char(' ')));
        QVERIFY2(run.errors.startsWith("debug split failed: "), run.errors.constData());
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.status, 1);
        QCOMPARE(run.filesBelowHome, QStringList());
    }

    void aSortThatFailsSaysSo()
    {
        const Run run = wrenfold::run("--goal G --debug-sort A B");
        QVERIFY2(run.errors.startsWith("debug sort failed: "), run.errors.constData());
        QCOMPARE(run.status, 1);
        QCOMPARE(run.filesBelowHome, QStringList());
    }

    void helpGoesToStandardOutput()
    {
        const Run run = wrenfold::run("--help");
        QCOMPARE(run.output, LaunchOptions::help().toUtf8());
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.filesBelowHome, QStringList());
    }

    void whatCannotBePrintedIsAFailure_data()
    {
        QTest::addColumn<QString>("option");
        for (const char *option : {"--debug-preserve-completed", "--help", "--version"})
            QTest::newRow(option) << QString::fromLatin1(option);
    }

    void whatCannotBePrintedIsAFailure()
    {
        QFETCH(QString, option);
        QProcess process;
        process.setStandardOutputFile(QStringLiteral("/dev/full"));
        process.start(program(), {option});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
    }

    void versionNamesTheProgramAndANumber()
    {
        const Run run = wrenfold::run("--version");
        const QRegularExpression form(QStringLiteral("^wrenfold [0-9]+\\.[0-9]+\\.[0-9]+\n$"));
        QVERIFY2(form.match(QString::fromUtf8(run.output)).hasMatch(), run.output.constData());
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.filesBelowHome, QStringList());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DebugCommandsTest)
#include "debug_commands_test.moc"
