// SPDX-License-Identifier: MIT
#include "look/plain_text.h"
#include "support/test_case.h"

#include <QFontMetrics>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

namespace wrenfold {

class PlainTextTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aGivenDirectionHoldsWhateverTheFirstLetter()
    {
        const QString hebrew = QStringLiteral("שלום");
        QCOMPARE(isolated(hebrew), QChar(0x2068) + hebrew + QChar(0x2069));
        QCOMPARE(isolated(hebrew, Qt::LeftToRight), QChar(0x2066) + hebrew + QChar(0x2069));
        QCOMPARE(isolated(hebrew, Qt::RightToLeft), QChar(0x2067) + hebrew + QChar(0x2069));
    }

    void aToolTipShowsTheTextExactly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << QStringLiteral("元に戻す（⌘Z）");
        QTest::newRow("markup") << QStringLiteral("A & B_c <b>x</b>");
        QTest::newRow("whole document") << QStringLiteral("<html><img src=\"file:///etc/hostname\"></html>");
        QTest::newRow("entities") << QStringLiteral("&amp; &lt;b&gt; \"q\" 'a'");
        QTest::newRow("lines") << QStringLiteral("first\nsecond");
        QTest::newRow("spaces") << QStringLiteral("a   b");
    }

    void aToolTipShowsTheTextExactly()
    {
        QFETCH(const QString, text);
        const QString tip = plainToolTip(text);
        QVERIFY(Qt::mightBeRichText(tip)); // So Qt takes our escapes as such.
        QTextDocument document;
        document.setHtml(tip);
        QCOMPARE(document.toPlainText(), text);
    }

    void aShortToolTipIsNotBroken()
    {
        const QString help = QStringLiteral("TODOをドラッグして並べ替え、またはあとでやるへ分類");
        const auto linesOf = [&help](const QString &text) {
            QTextDocument document;
            document.setHtml(plainToolTip(text));
            document.setTextWidth(QFontMetrics(document.defaultFont()).horizontalAdvance(help) / 2);
            return document.size().isEmpty() ? 0 : document.begin().layout()->lineCount();
        };
        QCOMPARE(linesOf(help), 1);
        QVERIFY(linesOf(help.repeated(4)) > 4);
    }

    void anEmptyToolTipStaysEmpty() { QCOMPARE(plainToolTip(QString()), QString()); }

    void lineBreaksBecomeSpaces()
    {
        QCOMPARE(oneLine(QStringLiteral("a\r\nb\nc\td\u2028e\u2029f")), QStringLiteral("a b c d e f"));
        QCOMPARE(oneLine(QStringLiteral("👩‍💻 日本語")), QStringLiteral("👩‍💻 日本語"));
    }

    void isolationBalancesWhatTheTextOpensAndEnds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("isolate");
        QTest::newRow("nothing") << QStringLiteral("a 日 🎉") << QStringLiteral("a 日 🎉");
        QTest::newRow("Hebrew") << QStringLiteral("א") << QStringLiteral("\u2068א\u2069");
        QTest::newRow("beyond the basic plane")
            << QStringLiteral("\U0001E900") << QStringLiteral("\u2068\U0001E900\u2069");
        QTest::newRow("override") << QStringLiteral("\u202Ea") << QStringLiteral("\u2068\u202Ea\u2069");
        QTest::newRow("surplus end") << QStringLiteral("a\u2069b") << QStringLiteral("\u2068ab\u2069");
        QTest::newRow("missing end") << QStringLiteral("a\u2067b")
                                     << QStringLiteral("\u2068a\u2067b\u2069\u2069");
        QTest::newRow("balanced") << QStringLiteral("\u2066a\u2069b")
                                  << QStringLiteral("\u2068\u2066a\u2069b\u2069");
    }

    void isolationBalancesWhatTheTextOpensAndEnds()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, isolate);
        QCOMPARE(isolated(text), isolate);
    }

    void aTextThatFitsIsNotElided()
    {
        const ElidedText result = elided(QStringLiteral("short"), QFont(), 1000, 1);
        QCOMPARE(result.lines, QStringList{QStringLiteral("short")});
        QVERIFY(!result.isElided);
    }

    void aLongTextEndsInAnEllipsis()
    {
        const QString text = QStringLiteral("a very long title that does not fit");
        const int width = QFontMetrics(QFont()).horizontalAdvance(text) / 2;
        const ElidedText result = elided(text, QFont(), width, 1);
        QCOMPARE(result.lines.size(), 1);
        QVERIFY(result.lines.constFirst().startsWith(QStringLiteral("a very")));
        QVERIFY(result.lines.constFirst().endsWith(QChar(0x2026)));
        QVERIFY(result.isElided);
    }

    void twoLinesAreFilledBeforeTheEllipsis()
    {
        const QString text = QStringLiteral("one two three four five six seven eight nine ten");
        const int width = QFontMetrics(QFont()).horizontalAdvance(text) / 3;
        const ElidedText result = elided(text, QFont(), width, 2);
        QCOMPARE(result.lines.size(), 2);
        QVERIFY(text.startsWith(result.lines.constFirst()));
        QVERIFY(!result.lines.constFirst().endsWith(QChar(0x2026)));
        QVERIFY(result.lines.constLast().endsWith(QChar(0x2026)));
        QVERIFY(result.isElided);
    }

    void twoLinesHoldATextOfTwoLines()
    {
        const QString text = QStringLiteral("one two three four");
        const int width = QFontMetrics(QFont()).horizontalAdvance(text) * 3 / 4;
        const ElidedText result = elided(text, QFont(), width, 2);
        QCOMPARE(result.lines.join(QLatin1Char(' ')), text);
        QCOMPARE(result.lines.size(), 2);
        QVERIFY(!result.isElided);
    }

    void aWordThatIsWiderThanALineIsBroken()
    {
        const QString word(60, QLatin1Char('x'));
        const int width = QFontMetrics(QFont()).horizontalAdvance(word) * 2 / 3;
        const ElidedText result = elided(QStringLiteral("a ") + word, QFont(), width, 3);
        QVERIFY(!result.isElided);
        QCOMPARE(result.lines.join(QString()).remove(QLatin1Char(' ')), QLatin1Char('a') + word);
        for (const QString &line : result.lines)
            QVERIFY(QFontMetrics(QFont()).horizontalAdvance(line) <= width);
    }

    void aShortTextTakesOneLineOfTwo()
    {
        const ElidedText result = elided(QStringLiteral("short"), QFont(), 1000, 2);
        QCOMPARE(result.lines, QStringList{QStringLiteral("short")});
        QVERIFY(!result.isElided);
    }

    void noTextIsOneEmptyLine()
    {
        QCOMPARE(elided(QString(), QFont(), 100, 1).lines, QStringList{QString()});
        QCOMPARE(elided(QString(), QFont(), 100, 2).lines, QStringList{QString()});
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::PlainTextTest)
#include "plain_text_test.moc"
