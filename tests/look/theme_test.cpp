// SPDX-License-Identifier: MIT
#include "look/theme.h"
#include "support/test_case.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>

#include <cmath>

namespace wrenfold {

namespace {

/// What the eye sees where `upper`, perhaps translucent, lies on the opaque `lower`; in whole channel steps.
QColor over(const QColor &upper, const QColor &lower)
{
    const double share = upper.alphaF();
    const auto channel = [share](int a, int b) {
        return static_cast<int>(std::lround(a * share + b * (1 - share)));
    };
    return {channel(upper.red(), lower.red()), channel(upper.green(), lower.green()),
            channel(upper.blue(), lower.blue())};
}

/// Relative luminance and contrast as the Web Content Accessibility Guidelines define them.
double luminance(const QColor &color)
{
    const auto linear = [](int channel) {
        const double value = channel / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red()) + 0.7152 * linear(color.green()) + 0.0722 * linear(color.blue());
}

double contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

struct Surface
{
    const char *name;
    QColor color;
};

void addRows(const char *themeName, const char *textName, const QColor &text, const QList<Surface> &surfaces)
{
    for (const Surface &surface : surfaces)
        QTest::addRow("%s: %s on %s", themeName, textName, surface.name) << text << surface.color;
}

void addTheme(const char *name, const Theme &theme)
{
    const Surface background{"background", theme.background};
    const Surface hover{"hover", over(theme.hover, theme.background)};
    const Surface card{"card", theme.card};
    const Surface board{"board", theme.board};
    const Surface soft{"soft accent", over(theme.accentSoft, theme.background)};
    const Surface chip{"chip on card", over(theme.hover, theme.card)};
    const Surface buttonInProposal{"button in proposal", over(theme.hover, soft.color)};
    const QList<Surface> common{background, hover, card, board, soft};

    addRows(name, "ink", theme.ink, common + QList<Surface>{chip, buttonInProposal});
    addRows(name, "secondary ink", theme.secondaryInk, common + QList<Surface>{chip});
    addRows(name, "tertiary ink", theme.tertiaryInk, common);
    addRows(name, "accent", theme.accent, common);
    addRows(name, "on accent", theme.onAccent, {{"accent", theme.accent}, {"green", theme.green}});
    addRows(name, "green", theme.green,
            {background,
             hover,
             card,
             {"badge", over(theme.greenSoft, theme.background)},
             {"tag", theme.tagSurface(theme.green)}});
    addRows(name, "orange", theme.orange, {background});
    addRows(name, "pink", theme.pink, {background, {"tag", theme.tagSurface(theme.pink)}});
    for (const Theme::Color member : Theme::quadrants()) {
        const QColor quadrant = theme.*member;
        const Surface drop{"drop target", theme.dropSurface(quadrant)};
        addRows(name, "quadrant", quadrant,
                {background, hover, card, drop, {"tag", theme.tagSurface(quadrant)}});
        addRows(name, "ink", theme.ink, {drop, {"chip on drop target", over(theme.hover, drop.color)}});
        addRows(name, "secondary ink", theme.secondaryInk, {drop});
        addRows(name, "tertiary ink", theme.tertiaryInk, {drop});
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
        addTheme("light", Theme::light());
        addTheme("dark", Theme::dark());
    }

    void everyTextIsReadableWhereItStands()
    {
        QFETCH(const QColor, text);
        QFETCH(const QColor, surface);
        const double ratio = contrast(text, surface);
        QVERIFY2(
            ratio >= 4.5,
            qPrintable(
                QStringLiteral("%1 : 1 of %2 on %3").arg(ratio, 0, 'f', 2).arg(text.name(), surface.name())));
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
