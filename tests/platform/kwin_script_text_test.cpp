// SPDX-License-Identifier: MIT
#include "platform/linux/kwin_script_text.h"
#include "support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace wrenfold {
namespace {

/// What a literal means: JSON knows the same escapes.
QString meaning(const QByteArray &literal)
{
    return QJsonDocument::fromJson('[' + literal + ']').array().at(0).toString();
}

WindowIdentity window(const QString &windowClass, const QString &windowInstance, const QString &desktopFile)
{
    WindowIdentity identity;
    identity.windowClass = windowClass;
    identity.windowInstance = windowInstance;
    identity.desktopFile = desktopFile;
    return identity;
}

QByteArray line(const QByteArray &script, qsizetype number)
{
    return script.split('\n').value(number);
}

} // namespace

/// The scripts for KWin, whatever windows call themselves.
class KWinScriptTextTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void anyTextIsALiteralOfItself_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("plain") << QStringLiteral("org.kde.konsole");
        QTest::newRow("double quotes") << QStringLiteral("\"); workspace.slotWindowClose(); (\"");
        QTest::newRow("single quotes and backticks") << QStringLiteral("'a' `${b}`");
        QTest::newRow("backslashes") << QStringLiteral("\\\\\" \\n \\u0022 \\");
        QTest::newRow("line breaks") << QStringLiteral("a\nb\r\nc\td");
        QTest::newRow("line separators") << QStringLiteral("a\u2028b\u2029c");
        QTest::newRow("the end of a script") << QStringLiteral("</script><!-- -->");
        QTest::newRow("emoji") << QStringLiteral("🍅 トマト é");
        QTest::newRow("zero") << QString(QStringLiteral("a") + QChar(0) + u'b');
        QTest::newRow("direction") << QStringLiteral("a\u202Eb\u200Bc");
    }

    void anyTextIsALiteralOfItself()
    {
        QFETCH(const QString, text);
        const QByteArray literal = javaScriptString(text);
        QCOMPARE(meaning(literal), text);
        QVERIFY(literal.startsWith('"') && literal.endsWith('"'));
        const QByteArray inside = literal.mid(1, literal.size() - 2);
        QVERIFY(std::all_of(inside.begin(), inside.end(), [](char c) { return c >= ' ' && c <= '~'; }));
        for (const char dangerous : {'"', '\'', '`', '<', '>', '$', '\n', '/'})
            QVERIFY(!inside.contains(dangerous));
        QCOMPARE(inside.count('\\'), inside.count("\\u"));
    }

    void halfACharacterIsEscapedToo()
    {
        QCOMPARE(javaScriptString(QString(QChar(0xD83C))), QByteArray("\"\\ud83c\""));
    }

    void theReportingScriptKnowsWhomToTell()
    {
        const QByteArray script = reportActiveWindowScript(QStringLiteral(":1.42"));
        QCOMPARE(line(script, 0), QByteArray("const program = \"\\u003a1.42\";"));
        QVERIFY(script.contains("\"dev.tolvane.Wrenfold.ActiveWindow\", \"Changed\""));
    }

    void theMinimizingScriptNamesTheWindows()
    {
        const QByteArray script = minimizeWindowsScript(
            QStringLiteral(":1.42"), {window(QStringLiteral("Foo"), QStringLiteral("foo"), QString()),
                                      window(QStringLiteral("a\"b"), QString(), QStringLiteral("org.foo"))});
        QCOMPARE(line(script, 0), QByteArray("const program = \"\\u003a1.42\";"));
        QCOMPARE(line(script, 1),
                 QByteArray("const names = [[\"Foo\", \"foo\", \"\"], [\"a\\u0022b\", \"\", \"org.foo\"]];"));
        QVERIFY(script.contains("window.minimized = true"));
        QVERIFY(script.contains("\"dev.tolvane.Wrenfold.ActiveWindow\", \"WindowsMinimized\""));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::KWinScriptTextTest)
#include "kwin_script_text_test.moc"
