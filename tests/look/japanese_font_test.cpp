// SPDX-License-Identifier: MIT
#include "look/japanese_font.h"
#include "support/test_case.h"

#include <QGlyphRun>
#include <QGuiApplication>
#include <QRawFont>
#include <QTextLayout>

namespace wrenfold {

namespace {

const QString japaneseFamily = QStringLiteral("Noto Sans CJK JP");
const QString generic = QStringLiteral("Sans Serif");
const QString latin = QStringLiteral("Noto Sans");

/// In small letters. Qt keeps what it found for a size that was used before.
QStringList familiesThatDraw(const QString &text, QFont font)
{
    static int unusedSize = 20;
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

class JapaneseFontTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aGenericFamilyBecomesTheSystemsFontForJapanese()
    {
        QFont wished(generic);
        wished.setPointSizeF(9.5);
        wished.setWeight(QFont::DemiBold);
        const QFont font = fontForJapanese(wished);
        QCOMPARE(font.family(), japaneseFamily);
        QCOMPARE(font.pointSizeF(), 9.5);
        QCOMPARE(font.weight(), QFont::DemiBold);
        for (const QString &text : {QStringLiteral("直近のタスク"), QStringLiteral("Task")})
            QCOMPARE(familiesThatDraw(text, font), QStringList(japaneseFamily.toLower()));
    }

    void toAFontsOwnFamilyTheSystemsFontForJapaneseIsAdded()
    {
        const QFont font = fontForJapanese(QFont(latin));
        QCOMPARE(fontForJapanese(font), font);
        QCOMPARE(font, QFont(latin));
        const QStringList japanese(japaneseFamily.toLower());
        QCOMPARE(QFont::substitutes(latin), japanese);
        QCOMPARE(familiesThatDraw(QStringLiteral("直近のタスク"), font), japanese);
        QCOMPARE(familiesThatDraw(QStringLiteral("Task"), font), QStringList(latin.toLower()));
    }

    void theFontForJapaneseStaysAsItIs()
    {
        QCOMPARE(fontForJapanese(QFont(japaneseFamily)), QFont(japaneseFamily));
        QVERIFY(QFont::substitutes(japaneseFamily).isEmpty());
    }
};

} // namespace wrenfold

int main(int argc, char **argv)
{
    qputenv("FC_LANG", "fr"); // What fontconfig takes for the desktop's language.
    const QGuiApplication application(argc, argv);
    wrenfold::JapaneseFontTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "japanese_font_test.moc"
