// SPDX-License-Identifier: MIT
#include "look/check_circle.h"
#include "look/count_badge.h"
#include "look/icon_button.h"
#include "look/plain_text.h"
#include "look/text_button.h"
#include "look/theme.h"
#include "support/contrast.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalSpy>

namespace wrenfold {

namespace {

const QString awkward = QStringLiteral("A & B_c <b>x</b>");

QString accessibleText(QWidget &widget, QAccessible::Text kind)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(kind);
}

QAccessible::Role roleOf(QWidget &widget)
{
    return QAccessible::queryAccessibleInterface(&widget)->role();
}

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Theme::current().background);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

bool holdsColor(const QImage &image, const QColor &color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color)
                return true;
        }
    }
    return false;
}

void setWindowColor(const QColor &color)
{
    QPalette palette;
    palette.setColor(QPalette::Window, color);
    QApplication::setPalette(palette);
}

/// A window with the one button, active and without focus inside.
void showActive(QWidget &window, QWidget &button)
{
    button.setParent(&window);
    button.resize(button.sizeHint());
    window.resize(200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    button.clearFocus(); // Which Qt gave to the first widget that takes it.
}

} // namespace

class ButtonsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setWindowColor(Qt::white); }

    void theFocusIsSeenOnThePrimaryButtonToo()
    {
        for (const QColor &windowColor : {QColor(Qt::white), QColor(Qt::black)}) {
            setWindowColor(windowColor);
            QWidget window;
            TextButton button(QStringLiteral("OK"), TextButton::Kind::Primary);
            showActive(window, button);
            const QPoint onTheRing(button.width() / 2, 3);
            QCOMPARE(picture(button).pixelColor(onTheRing), Theme::current().accent);
            button.setFocus(Qt::TabFocusReason);
            QVERIFY(contrast(picture(button).pixelColor(onTheRing), Theme::current().accent) >= 3);
            button.setParent(nullptr);
        }
    }

    void anIconButtonReadsItsHelpExactly()
    {
        IconButton button(QStringLiteral("trash"), awkward);
        QCOMPARE(roleOf(button), QAccessible::Button);
        QCOMPARE(accessibleText(button, QAccessible::Name), awkward);
        QCOMPARE(accessibleText(button, QAccessible::Description), QString());
        QVERIFY(button.shortcut().isEmpty());
        QCOMPARE(shownToolTip(button), plainToolTip(awkward));
        button.setHelp(QStringLiteral("元に戻す（⌘Z）"));
        QCOMPARE(accessibleText(button, QAccessible::Name), QStringLiteral("元に戻す（⌘Z）"));
    }

    void aCheckCircleReadsItsHelpAndStateExactly()
    {
        CheckCircle circle(awkward);
        QCOMPARE(roleOf(circle), QAccessible::CheckBox);
        QCOMPARE(accessibleText(circle, QAccessible::Name), awkward);
        QVERIFY(circle.shortcut().isEmpty());
        QCOMPARE(shownToolTip(circle), plainToolTip(awkward));
        QVERIFY(!QAccessible::queryAccessibleInterface(&circle)->state().checked);
        circle.setChecked(true);
        QVERIFY(QAccessible::queryAccessibleInterface(&circle)->state().checked);
    }

    void assistiveTechnologyTogglesACheckCircleByAClick()
    {
        CheckCircle circle(awkward);
        const QSignalSpy clicks(&circle, &CheckCircle::clicked);
        QAccessibleActionInterface *actions =
            QAccessible::queryAccessibleInterface(&circle)->actionInterface();
        const QString toggle = QAccessibleActionInterface::toggleAction();
        QVERIFY(actions->actionNames().contains(toggle));
        actions->doAction(toggle);
        QCOMPARE(clicks.count(), 1);
        QVERIFY(circle.isChecked());
        circle.setEnabled(false);
        QVERIFY(!actions->actionNames().contains(toggle));
        actions->doAction(toggle);
        QCOMPARE(clicks.count(), 1);
    }

    void aTextButtonShowsAndReadsItsLabelExactly()
    {
        TextButton button(awkward);
        button.resize(button.sizeHint());
        QCOMPARE(paintedText(button), awkward);
        QCOMPARE(roleOf(button), QAccessible::Button);
        QCOMPARE(accessibleText(button, QAccessible::Name), awkward);
        QVERIFY(button.shortcut().isEmpty());
        QVERIFY(showsNoToolTip(button));
        button.setHelp(awkward);
        QCOMPARE(shownToolTip(button), plainToolTip(awkward));
        QCOMPARE(accessibleText(button, QAccessible::Description), awkward);
    }

    void aCountBadgeShowsItsNumberAndReadsItsHelpExactly()
    {
        CountBadge badge(awkward);
        badge.setCount(12);
        badge.resize(badge.sizeHint());
        QCOMPARE(paintedText(badge), QStringLiteral("12"));
        QCOMPARE(roleOf(badge), QAccessible::StaticText);
        QCOMPARE(accessibleText(badge, QAccessible::Name), awkward + QStringLiteral(" 12"));
        QCOMPARE(shownToolTip(badge), plainToolTip(awkward));
    }

    void spaceAndReturnPressAButton()
    {
        TextButton button(awkward);
        QSignalSpy clicks(&button, &QAbstractButton::clicked);
        QTest::keyClick(&button, Qt::Key_Space);
        QTest::keyClick(&button, Qt::Key_Return);
        QTest::keyClick(&button, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(clicks.size(), 3);
        QTest::keyClick(&button, Qt::Key_Return, Qt::ControlModifier);
        QTest::keyClick(&button, Qt::Key_B, Qt::AltModifier);
        QCOMPARE(clicks.size(), 3);
    }

    void spaceAndReturnToggleACheckCircle()
    {
        CheckCircle circle(awkward);
        QTest::keyClick(&circle, Qt::Key_Return);
        QVERIFY(circle.isChecked());
        QTest::keyClick(&circle, Qt::Key_Space);
        QVERIFY(!circle.isChecked());
    }

    void aDisabledButtonDoesNotAct()
    {
        IconButton button(QStringLiteral("trash"), awkward);
        button.setEnabled(false);
        QSignalSpy clicks(&button, &QAbstractButton::clicked);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&button, &press);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicks.size(), 0);
    }

    void arrowKeysAreLeftToTheList()
    {
        IconButton button(QStringLiteral("trash"), awkward);
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(&button, &down);
        QVERIFY(!down.isAccepted());
    }

    void everyButtonIsLargeEnoughToHit()
    {
        for (const QSize size :
             {IconButton(QStringLiteral("trash"), awkward).sizeHint(), CheckCircle(awkward).sizeHint(),
              TextButton(QStringLiteral("i")).sizeHint()}) {
            QVERIFY(size.width() >= 24);
            QVERIFY(size.height() >= 24);
        }
    }

    void onlyKeyboardFocusIsShown()
    {
        QWidget window;
        auto *button = new IconButton(QStringLiteral("chevron.right"), awkward);
        showActive(window, *button);
        button->setFocus(Qt::TabFocusReason);
        QVERIFY(button->hasFocus());
        QVERIFY(holdsColor(picture(*button), Theme::light().accent));
        button->clearFocus();
        button->setFocus(Qt::MouseFocusReason);
        QVERIFY(button->hasFocus());
        QVERIFY(!holdsColor(picture(*button), Theme::light().accent));
    }

    void aClickLeavesTheFocusWhereItIs()
    {
        QWidget window;
        auto *button = new IconButton(QStringLiteral("trash"), awkward);
        showActive(window, *button);
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(!button->hasFocus());
    }

    void anIconButtonShowsItsState()
    {
        const Theme &theme = Theme::light();
        IconButton button(QStringLiteral("square.grid.2x2.fill"), awkward);
        button.resize(button.sizeHint());
        QVERIFY(holdsColor(picture(button), theme.secondaryInk));
        QCOMPARE(picture(button).pixelColor(13, 1), theme.background);

        button.setTint(&Theme::green);
        QVERIFY(holdsColor(picture(button), theme.green));
        button.setOn(true);
        QVERIFY(holdsColor(picture(button), theme.accent));
        QVERIFY(picture(button).pixelColor(13, 1) != theme.background);
        button.setEnabled(false);
        QVERIFY(!holdsColor(picture(button), theme.accent));
        QVERIFY(!holdsColor(picture(button), theme.green));
    }

    void anIconButtonAnswersThePointer()
    {
        IconButton button(QStringLiteral("trash"), awkward);
        button.resize(button.sizeHint());
        const QImage before = picture(button);
        button.setAttribute(Qt::WA_UnderMouse);
        QVERIFY(picture(button) != before);
    }

    void anIconButtonChangesItsSymbol()
    {
        IconButton button(QStringLiteral("play.fill"), awkward);
        button.resize(button.sizeHint());
        const QImage before = picture(button);
        button.setSymbol(QStringLiteral("pause.fill"));
        QCOMPARE(button.symbol(), QStringLiteral("pause.fill"));
        QVERIFY(picture(button) != before);
    }

    void aCheckCircleShowsItsState()
    {
        const Theme &theme = Theme::light();
        CheckCircle circle(awkward);
        circle.resize(circle.sizeHint());
        QVERIFY(holdsColor(picture(circle), theme.tertiaryInk));
        QCOMPARE(picture(circle).pixelColor(12, 12), theme.background);
        circle.setNow(true);
        QVERIFY(holdsColor(picture(circle), theme.accent));
        circle.setChecked(true);
        QVERIFY(!holdsColor(picture(circle), theme.accent));
        QCOMPARE(picture(circle).pixelColor(12, 7), theme.green);
    }

    void buttonsFollowTheDesktopsThemeLive()
    {
        QWidget window;
        auto *button = new IconButton(QStringLiteral("square.grid.2x2.fill"), awkward);
        showActive(window, *button);
        QVERIFY(holdsColor(window.grab().toImage(), Theme::light().secondaryInk));
        struct PaintCounter : QObject
        {
            int paints = 0;
            bool eventFilter(QObject *, QEvent *event) override
            {
                paints += event->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
        } counter;
        button->installEventFilter(&counter);
        setWindowColor(Qt::black);
        QTRY_VERIFY(counter.paints > 0);
        QVERIFY(holdsColor(window.grab().toImage(), Theme::dark().secondaryInk));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ButtonsTest)
#include "buttons_test.moc"
