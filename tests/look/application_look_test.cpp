// SPDX-License-Identifier: MIT
#include "look/application_look.h"
#include "look/text_field.h"
#include "look/theme.h"
#include "support/contrast.h"
#include "support/test_case.h"

#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QPalette>
#include <QToolTip>
#include <QWindow>

namespace wrenfold {

namespace {

/// A widget that counts how often it is painted, and in which theme last.
class Canvas : public QWidget
{
public:
    const Theme *theme = nullptr;
    int paintings = 0;

protected:
    void paintEvent(QPaintEvent *) override
    {
        theme = &Theme::current();
        ++paintings;
    }
};

/// The tool tip in sight, if there is one.
QWidget *toolTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->windowType() == Qt::ToolTip)
            return window;
    }
    return nullptr;
}

ApplicationLook::Wishes scheme(std::optional<bool> isDark, bool isHighContrast = false)
{
    return {isDark, isHighContrast, false};
}

} // namespace

class ApplicationLookTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        ApplicationLook().follow({});
        delete toolTip();
    }

    void theThemeIsTheOneWishedFor_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<bool>("isHighContrast");
        QTest::addColumn<const Theme *>("theme");
        QTest::newRow("light") << false << false << &Theme::light();
        QTest::newRow("dark") << true << false << &Theme::dark();
        QTest::newRow("light, high contrast") << false << true << &Theme::lightHighContrast();
        QTest::newRow("dark, high contrast") << true << true << &Theme::darkHighContrast();
    }

    void theThemeIsTheOneWishedFor()
    {
        QFETCH(const bool, isDark);
        QFETCH(const bool, isHighContrast);
        QFETCH(const Theme *, theme);
        ApplicationLook look;
        look.follow(scheme(isDark, isHighContrast));
        QCOMPARE(&Theme::current(), theme);
    }

    void withoutAWishTheDesktopsPaletteDecides()
    {
        const QPalette desktops = QApplication::palette();
        ApplicationLook look;
        look.follow(scheme(true));
        look.follow(scheme({}));
        QCOMPARE(&Theme::current(), &Theme::light());
        QCOMPARE(QApplication::palette(), desktops);
        look.follow(scheme({}, true));
        QCOMPARE(&Theme::current(), &Theme::lightHighContrast());
    }

    void aPaletteOfTheDesktopsThatFitsStays()
    {
        const QPalette desktops = QApplication::palette();
        ApplicationLook look;
        look.follow(scheme(false));
        QCOMPARE(QApplication::palette(), desktops);
        QVERIFY(!QCoreApplication::testAttribute(Qt::AA_SetPalette));
        look.follow(scheme(true));
        QVERIFY(QApplication::palette() != desktops);
        look.follow(scheme(false));
        QCOMPARE(QApplication::palette(), desktops);
        QVERIFY(!QCoreApplication::testAttribute(Qt::AA_SetPalette));
    }

    void anotherThemeOfTheDesktopsIsLookedAtAnew()
    {
        QWindow window;
        ApplicationLook look;
        look.follow(scheme(true));
        // As if the desktop's theme had put something else into place.
        QApplication::setPalette(QPalette());
        QCOMPARE(&Theme::current(), &Theme::light());
        QEvent themeChange(QEvent::ThemeChange);
        QCoreApplication::sendEvent(&window, &themeChange);
        QCOMPARE(&Theme::current(), &Theme::dark());
    }

    void everythingInSightIsPaintedAnew()
    {
        Canvas canvas;
        auto *child = new Canvas;
        child->setParent(&canvas);
        canvas.show();
        QTRY_VERIFY(canvas.paintings > 0 && child->paintings > 0);
        ApplicationLook look;
        const std::array wishes = {scheme(true),     scheme(true, true), scheme(false, true),
                                   scheme({}, true), scheme(true, true), scheme(false),
                                   scheme(true),     scheme({})};
        for (const ApplicationLook::Wishes &wish : wishes) {
            look.follow(wish);
            QTRY_COMPARE(canvas.theme, &Theme::current());
            QTRY_COMPARE(child->theme, &Theme::current());
        }
    }

    void fieldsTakeTheNewColours()
    {
        TextField field(QStringLiteral("field"));
        field.show();
        ApplicationLook look;
        look.follow(scheme(true));
        QTRY_COMPARE(field.palette().color(QPalette::Text), Theme::dark().ink);
        look.follow(scheme(true, true));
        QTRY_COMPARE(field.palette().color(QPalette::Text), Theme::darkHighContrast().ink);
        look.follow(scheme(false));
        QTRY_COMPARE(field.palette().color(QPalette::Text), Theme::light().ink);
    }

    void menusToolTipsAndQuestionsAreReadable_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<bool>("isHighContrast");
        QTest::addColumn<double>("least");
        QTest::newRow("dark") << true << false << 4.5;
        QTest::newRow("dark, high contrast") << true << true << 7.0;
        QTest::newRow("light, high contrast") << false << true << 7.0;
    }

    void menusToolTipsAndQuestionsAreReadable()
    {
        QFETCH(const bool, isDark);
        QFETCH(const bool, isHighContrast);
        QFETCH(const double, least);
        ApplicationLook look;
        look.follow(scheme(isDark, isHighContrast));
        const QMenu menu;
        QTest::ignoreMessage(QtWarningMsg,
                             "This plugin does not support raise()"); // The offscreen platform's.
        QToolTip::showText({}, QStringLiteral("tip"));
        constexpr std::array pairs = {std::pair(QPalette::WindowText, QPalette::Window),
                                      std::pair(QPalette::Text, QPalette::Base),
                                      std::pair(QPalette::Text, QPalette::AlternateBase),
                                      std::pair(QPalette::ButtonText, QPalette::Button),
                                      std::pair(QPalette::PlaceholderText, QPalette::Base),
                                      std::pair(QPalette::HighlightedText, QPalette::Highlight),
                                      std::pair(QPalette::Link, QPalette::Window),
                                      std::pair(QPalette::ToolTipText, QPalette::ToolTipBase)};
        for (const QPalette &palette : {QApplication::palette(), menu.palette(), toolTip()->palette()}) {
            QCOMPARE(palette.color(QPalette::Window).lightness() < 128, isDark);
            for (const auto &[text, surface] : pairs) {
                const double ratio = contrast(palette.color(text), palette.color(surface));
                QVERIFY2(
                    ratio >= least,
                    qPrintable(
                        QStringLiteral("%1 : 1 of role %2 on role %3").arg(ratio).arg(text).arg(surface)));
            }
        }
    }

    void aToolTipInSightChangesToo()
    {
        QTest::ignoreMessage(QtWarningMsg,
                             "This plugin does not support raise()"); // The offscreen platform's.
        QToolTip::showText({}, QStringLiteral("tip"));
        QVERIFY(toolTip());
        ApplicationLook look;
        look.follow(scheme(true));
        QTRY_COMPARE(toolTip()->palette().color(QPalette::ToolTipBase), Theme::dark().card);
        look.follow(scheme(false));
        QTRY_VERIFY(toolTip()->palette().color(QPalette::ToolTipBase) != Theme::dark().card);
    }

    void motionIsOffOnRequest()
    {
        ApplicationLook look;
        QCOMPARE(Durations::motion(), std::chrono::milliseconds(160));
        look.follow({{}, false, true});
        QCOMPARE(Durations::motion(), std::chrono::milliseconds(0));
        look.follow({});
        QCOMPARE(Durations::motion(), std::chrono::milliseconds(160));
    }

    void menusCallTheKeyAsKeyboardsDo()
    {
        const ApplicationLook look;
        const QKeySequence keys(Qt::CTRL | Qt::ALT | Qt::META | Qt::Key_P);
        QCOMPARE(keys.toString(QKeySequence::NativeText), QStringLiteral("Super+Ctrl+Alt+P"));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ApplicationLookTest)
#include "application_look_test.moc"
