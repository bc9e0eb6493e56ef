// SPDX-License-Identifier: MIT
#include "look/application_look.h"

#include "look/japanese_font.h"
#include "look/theme.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QPalette>
#include <QTranslator>

namespace wrenfold {

namespace {

QPalette paletteOf(const Theme &theme)
{
    // A shade off the panel's surface, so that a menu stands out from it. The shades of edges come from this one.
    const QColor surface = theme.tagSurface(theme.ink);
    QPalette palette(surface);
    palette.setColor(QPalette::Base, surface);
    palette.setColor(QPalette::AlternateBase, theme.board);
    palette.setColor(QPalette::ToolTipBase, theme.card);
    palette.setColor(QPalette::PlaceholderText, theme.secondaryInk);
    palette.setColor(QPalette::Highlight, theme.accent);
    palette.setColor(QPalette::HighlightedText, theme.onAccent);
    palette.setColor(QPalette::Link, theme.accent);
    palette.setColor(QPalette::LinkVisited, theme.accent);
    QColor disabledInk = theme.tertiaryInk;
    disabledInk.setAlphaF(static_cast<float>(Metrics::disabledOpacity));
    for (const QPalette::ColorRole text :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(text, theme.ink);
        palette.setColor(QPalette::Disabled, text, disabledInk);
    }
    return palette;
}

/// The key that Qt calls Meta is called Super on keyboards and desktops.
class KeyNames : public QTranslator
{
public:
    using QTranslator::QTranslator;

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char *context, const char *text, const char *, int) const override
    {
        const bool isMeta = qstrcmp(context, "QShortcut") == 0 && qstrcmp(text, "Meta") == 0;
        return isMeta ? QStringLiteral("Super") : QString();
    }
};

void followDesktopsFont()
{
    const QFont font = fontForJapanese(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
    if (font != QApplication::font())
        QApplication::setFont(font);
}

} // namespace

ApplicationLook::ApplicationLook()
{
    qApp->installTranslator(new KeyNames(this));
    followDesktopsFont();
    qApp->installEventFilter(this);
}

void ApplicationLook::follow(const Wishes &wishes)
{
    m_wishes = wishes;
    Durations::setMotionReduced(wishes.isMotionReduced);
    Theme::setHighContrast(wishes.isHighContrast);
    choosePalette();
}

bool ApplicationLook::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ThemeChange && watched->isWindowType()) {
        followDesktopsFont();
        choosePalette();
    }
    return QObject::eventFilter(watched, event);
}

void ApplicationLook::choosePalette()
{
    QApplication::setPalette(QPalette()); // The desktop's own.
    const bool isDesktopDark = Theme::isPaletteDark();
    const bool isDark = m_wishes.isDark.value_or(isDesktopDark);
    if (m_wishes.isHighContrast || isDark != isDesktopDark)
        QApplication::setPalette(paletteOf(Theme::inScheme(isDark)));
}

} // namespace wrenfold
