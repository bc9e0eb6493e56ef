// SPDX-License-Identifier: MIT
#include "look/japanese_fallback.h"
#include "support/test_case.h"

#include <QGlyphRun>
#include <QGuiApplication>
#include <QRawFont>
#include <QTextLayout>

namespace wrenfold {

namespace {

/// In small letters. Qt keeps what it found for a size that was used before.
QStringList familiesThatDraw(const QString &text)
{
    static int unusedSize = 20;
    QFont font;
    font.setPixelSize(++unusedSize);
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    QStringList families;
    for (const QGlyphRun &run : layout.glyphRuns())
        families.append(run.rawFont().familyName().toLower());
    families.removeDuplicates();
    return families;
}

} // namespace

class JapaneseFallbackTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theSystemsFontForJapaneseComesFirstOfTheOthers()
    {
        const QString family = QGuiApplication::font().family();
        preferJapaneseFallback(family);
        preferJapaneseFallback(family);
        const QStringList japanese(QStringLiteral("noto sans cjk jp"));
        QCOMPARE(QFont::substitutes(family), japanese);
        QCOMPARE(familiesThatDraw(QStringLiteral("直近のタスク")), japanese);
    }

    void latinStaysInTheDesktopsFont()
    {
        const QStringList before = familiesThatDraw(QStringLiteral("Task"));
        preferJapaneseFallback(QGuiApplication::font().family());
        QCOMPARE(familiesThatDraw(QStringLiteral("Task")), before);
    }
};

} // namespace wrenfold

int main(int argc, char **argv)
{
    qputenv("FC_LANG", "fr"); // What fontconfig takes for the desktop's language.
    const QGuiApplication application(argc, argv);
    wrenfold::JapaneseFallbackTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "japanese_fallback_test.moc"
