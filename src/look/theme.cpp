// SPDX-License-Identifier: MIT
#include "look/theme.h"

#include <QGuiApplication>
#include <QPalette>

namespace wrenfold {

namespace {

bool highContrast = false;
bool motionReduced = false;

QColor rgb(QRgb value)
{
    return QColor::fromRgb(value);
}

QColor withAlpha(QColor color, float alpha)
{
    color.setAlphaF(alpha);
    return color;
}

/// `share` of `upper`, the rest of `lower`; both opaque.
QColor mixed(const QColor &upper, float share, const QColor &lower)
{
    const auto channel = [share](float a, float b) { return a * share + b * (1.0F - share); };
    return QColor::fromRgbF(channel(upper.redF(), lower.redF()), channel(upper.greenF(), lower.greenF()),
                            channel(upper.blueF(), lower.blueF()));
}

Theme withDerivedColors(Theme theme)
{
    // Opaque, because Qt blends curves that are not on threads of its own, and the timer would wake them each second.
    theme.ringTrack = mixed(theme.line, theme.line.alphaF(), theme.background);
    theme.ringHover = mixed(theme.hover, theme.hover.alphaF(), theme.background);
    theme.board = mixed(theme.accent, 0.06F, theme.background);
    theme.accentLine = withAlpha(theme.accent, 0.45F);
    theme.greenSoft = withAlpha(theme.green, 0.12F);
    return theme;
}

Theme makeLight()
{
    Theme theme;
    theme.background = rgb(0xfbfaf7);
    theme.card = rgb(0xffffff);
    theme.line = withAlpha(rgb(0x1e2228), 0.09F);
    theme.hover = withAlpha(rgb(0x1e2228), 0.055F);
    theme.ink = rgb(0x23262b);
    theme.secondaryInk = rgb(0x5d626b);
    theme.tertiaryInk = rgb(0x646a73);
    theme.accent = rgb(0x4a5bd4);
    theme.accentSoft = withAlpha(theme.accent, 0.10F);
    theme.onAccent = rgb(0xffffff);
    theme.green = rgb(0x1e7743);
    theme.orange = rgb(0xa8560a);
    theme.pink = rgb(0xc02f68);
    theme.urgentAndImportant = rgb(0xb83535);
    theme.important = rgb(0x2c66b2);
    theme.urgent = rgb(0x8a5a0c);
    theme.neither = rgb(0x616770);
    return withDerivedColors(theme);
}

Theme makeDark()
{
    Theme theme;
    theme.background = rgb(0x1f2126);
    theme.card = rgb(0x282b31);
    theme.line = withAlpha(rgb(0xffffff), 0.09F);
    theme.hover = withAlpha(rgb(0xffffff), 0.07F);
    theme.ink = rgb(0xeceef1);
    theme.secondaryInk = rgb(0xa4aab3);
    theme.tertiaryInk = rgb(0x989fa9);
    theme.accent = rgb(0x8d9bff);
    theme.accentSoft = withAlpha(theme.accent, 0.15F);
    theme.onAccent = rgb(0x14161c);
    theme.green = rgb(0x4cc482);
    theme.orange = rgb(0xf09a45);
    theme.pink = rgb(0xf2709f);
    theme.urgentAndImportant = rgb(0xf07b7b);
    theme.important = rgb(0x71a9f2);
    theme.urgent = rgb(0xe5ad55);
    theme.neither = rgb(0x9aa1ab);
    return withDerivedColors(theme);
}

/// Nearly black on white or white on black, with colours between the theme's own and the ink.
Theme withHighContrast(Theme theme, const QColor &ink, const QColor &paper)
{
    theme.background = theme.card = paper;
    theme.ink = ink;
    theme.secondaryInk = theme.tertiaryInk = mixed(ink, 0.8F, paper);
    theme.line = theme.fieldLine = mixed(ink, 0.6F, paper);
    theme.onAccent = paper;
    for (const Theme::Color color :
         {&Theme::accent, &Theme::green, &Theme::orange, &Theme::pink, &Theme::urgentAndImportant,
          &Theme::important, &Theme::urgent, &Theme::neither})
        theme.*color = mixed(ink, 0.4F, theme.*color);
    theme.accentSoft = withAlpha(theme.accent, theme.accentSoft.alphaF());
    theme.focusRingWidth = 3.0;
    theme = withDerivedColors(theme);
    theme.accentLine = theme.accent;
    return theme;
}

QFont sized(int pixels, QFont::Weight weight = QFont::Normal)
{
    QFont font;
    font.setPixelSize(pixels);
    if (weight != QFont::Normal)
        font.setWeight(weight);
    return font;
}

QFont spaced(QFont font, qreal pixels)
{
    font.setLetterSpacing(QFont::AbsoluteSpacing, pixels);
    return font;
}

} // namespace

QColor Theme::tagSurface(const QColor &text) const
{
    return mixed(text, 0.10F, background);
}

QColor Theme::dropSurface(const QColor &text) const
{
    return mixed(text, 0.08F, card);
}

const Theme &Theme::light()
{
    static const Theme theme = makeLight();
    return theme;
}

const Theme &Theme::dark()
{
    static const Theme theme = makeDark();
    return theme;
}

const Theme &Theme::lightHighContrast()
{
    static const Theme theme = withHighContrast(light(), Qt::black, Qt::white);
    return theme;
}

const Theme &Theme::darkHighContrast()
{
    static const Theme theme = withHighContrast(dark(), Qt::white, Qt::black);
    return theme;
}

const Theme &Theme::inScheme(bool isDark)
{
    if (highContrast)
        return isDark ? darkHighContrast() : lightHighContrast();
    return isDark ? dark() : light();
}

bool Theme::isPaletteDark()
{
    return QGuiApplication::palette().color(QPalette::Active, QPalette::Window).lightness() < 128;
}

void Theme::setHighContrast(bool isHighContrast)
{
    highContrast = isHighContrast;
}

std::chrono::milliseconds Durations::motion()
{
    return std::chrono::milliseconds(motionReduced ? 0 : 160);
}

void Durations::setMotionReduced(bool isReduced)
{
    motionReduced = isReduced;
}

namespace Fonts {

QFont body()
{
    return sized(13);
}

QFont strong()
{
    return sized(13, QFont::DemiBold);
}

QFont subtask()
{
    return sized(12);
}

QFont small()
{
    return sized(11);
}

QFont smallStrong()
{
    return spaced(sized(11, QFont::DemiBold), 0.3);
}

QFont tiny()
{
    return sized(10);
}

QFont tinyStrong()
{
    return sized(10, QFont::DemiBold);
}

QFont control()
{
    return sized(12, QFont::DemiBold);
}

QFont title()
{
    return sized(15, QFont::DemiBold);
}

QFont windowTitle()
{
    return sized(14, QFont::DemiBold);
}

QFont time()
{
    return spaced(sized(24, QFont::DemiBold), 0.2);
}

QFont note()
{
    constexpr qreal share = 0.92;
    const QFont usual = QGuiApplication::font();
    QFont font;
    if (usual.pixelSize() > 0)
        font.setPixelSize(qRound(usual.pixelSize() * share));
    else
        font.setPointSizeF(usual.pointSizeF() * share);
    return font;
}

} // namespace Fonts

} // namespace wrenfold
