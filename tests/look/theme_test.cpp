// SPDX-License-Identifier: MIT
#include "look/theme.h"
#include "support/contrast.h"
#include "support/test_case.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>

namespace wrenfold {

namespace {

struct Surface
{
    const char *name;
    QColor color;
};

struct NamedTheme
{
    const char *name;
    const Theme &theme;
    double leastTextContrast;
};

QList<NamedTheme> themes()
{
    return {{"light", Theme::light(), 4.5},
            {"dark", Theme::dark(), 4.5},
            {"light, high contrast", Theme::lightHighContrast(), 7.0},
            {"dark, high contrast", Theme::darkHighContrast(), 7.0}};
}

void addTheme(const NamedTheme &named)
{
    const Theme &theme = named.theme;
    const auto addRows = [&](const char *textName, const QColor &text, const QList<Surface> &surfaces) {
        for (const Surface &surface : surfaces)
            QTest::addRow("%s: %s on %s", named.name, textName, surface.name)
                << text << surface.color << named.leastTextContrast;
    };
    const Surface background{"background", theme.background};
    const Surface hover{"hover", over(theme.hover, theme.background)};
    const Surface card{"card", theme.card};
    const Surface board{"board", theme.board};
    const Surface soft{"soft accent", over(theme.accentSoft, theme.background)};
    const Surface chip{"chip on card", over(theme.hover, theme.card)};
    const Surface buttonInProposal{"button in proposal", over(theme.hover, soft.color)};
    const QList<Surface> common{background, hover, card, board, soft};

    addRows("ink", theme.ink, common + QList<Surface>{chip, buttonInProposal});
    addRows("secondary ink", theme.secondaryInk, common + QList<Surface>{chip});
    addRows("tertiary ink", theme.tertiaryInk, common);
    addRows("accent", theme.accent, common);
    addRows("on accent", theme.onAccent, {{"accent", theme.accent}, {"green", theme.green}});
    addRows("green", theme.green,
            {background,
             hover,
             card,
             {"badge", over(theme.greenSoft, theme.background)},
             {"tag", theme.tagSurface(theme.green)}});
    addRows("orange", theme.orange, {background});
    addRows("pink", theme.pink, {background, {"tag", theme.tagSurface(theme.pink)}});
    for (const Theme::Color member : Theme::quadrants()) {
        const QColor quadrant = theme.*member;
        const Surface drop{"drop target", theme.dropSurface(quadrant)};
        addRows("quadrant", quadrant, {background, hover, card, drop, {"tag", theme.tagSurface(quadrant)}});
        addRows("ink", theme.ink, {drop, {"chip on drop target", over(theme.hover, drop.color)}});
        addRows("secondary ink", theme.secondaryInk, {drop});
        addRows("tertiary ink", theme.tertiaryInk, {drop});
    }
}

} // namespace

class ThemeTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theContrastFormulaIsRight()
    {
        QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
        QVERIFY(std::abs(contrast(QColor(0x76, 0x76, 0x76), Qt::white) - 4.54) < 0.005);
    }

    void everyTextIsReadableWhereItStands_data()
    {
        QTest::addColumn<QColor>("text");
        QTest::addColumn<QColor>("surface");
        QTest::addColumn<double>("least");
        for (const NamedTheme &theme : themes())
            addTheme(theme);
    }

    void everyTextIsReadableWhereItStands()
    {
        QFETCH(const QColor, text);
        QFETCH(const QColor, surface);
        QFETCH(const double, least);
        QCOMPARE(text.alpha(), 255);
        const double ratio = contrast(text, surface);
        QVERIFY2(
            ratio >= least,
            qPrintable(
                QStringLiteral("%1 : 1 of %2 on %3").arg(ratio, 0, 'f', 2).arg(text.name(), surface.name())));
    }

    void withHighContrastLinesAreSeenToo()
    {
        for (const Theme *theme : {&Theme::lightHighContrast(), &Theme::darkHighContrast()}) {
            for (const QColor &surface : {theme->background, theme->card, theme->board}) {
                QVERIFY(contrast(over(theme->line, surface), surface) >= 3);
                QVERIFY(contrast(over(theme->fieldLine, surface), surface) >= 3);
                QVERIFY(contrast(over(theme->accentLine, surface), surface) >= 3);
                QVERIFY(contrast(theme->accent, surface) >= 3); // The ring of the focus.
            }
            QVERIFY(contrast(over(theme->fieldLine, theme->background),
                             over(theme->hover, theme->background)) >= 3);
            QVERIFY(theme->focusRingWidth > Theme::light().focusRingWidth);
        }
        QVERIFY(!Theme::light().fieldLine.isValid());
        QVERIFY(!Theme::dark().fieldLine.isValid());
    }

    void theCurrentThemeFollowsTheDesktopsPalette()
    {
        QPalette palette;
        palette.setColor(QPalette::Window, QColor(0x20, 0x20, 0x20));
        QApplication::setPalette(palette);
        QCOMPARE(&Theme::current(), &Theme::dark());
        palette.setColor(QPalette::Window, QColor(0xef, 0xef, 0xef));
        QApplication::setPalette(palette);
        QCOMPARE(&Theme::current(), &Theme::light());
    }

    void fontsFollowTheDesktopsFamily()
    {
        const QFont before = QApplication::font();
        QWidget widget;
        widget.setFont(Fonts::title());
        widget.show();
        QCOMPARE(widget.font().pixelSize(), 15);
        QApplication::setFont(QFont(QStringLiteral("Noto Serif CJK JP"), 30));
        QTRY_COMPARE(widget.font().family(), QStringLiteral("Noto Serif CJK JP"));
        QCOMPARE(widget.font().pixelSize(), 15);
        QCOMPARE(Fonts::body().family(), QStringLiteral("Noto Serif CJK JP"));
        QApplication::setFont(before);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ThemeTest)
#include "theme_test.moc"
