// SPDX-License-Identifier: MIT
#include "look/plain_text.h"
#include "look/text_label.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace wrenfold {

namespace {

const QString awkward = QStringLiteral("A & B_c <b>x</b>");
const QString longTitle = QStringLiteral("見積書の差し替えをお願いします <i>&</i> and a good deal more");

QAccessibleInterface &accessible(QWidget &widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

} // namespace

class TextLabelTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aTextIsShownAndReadExactly()
    {
        TextLabel label(awkward);
        label.resize(label.sizeHint());
        QCOMPARE(paintedText(label), awkward);
        QVERIFY(!label.isElided());
        QCOMPARE(accessible(label).role(), QAccessible::StaticText);
        QCOMPARE(accessible(label).text(QAccessible::Name), awkward);
        QVERIFY(showsNoToolTip(label));
    }

    void aTextThatDoesNotFitIsElidedAndToldByTheToolTip()
    {
        TextLabel label(longTitle);
        label.resize(120, label.sizeHint().height());
        QVERIFY(label.isElided());
        const QString painted = paintedText(label);
        QVERIFY(painted.endsWith(QChar(0x2026)));
        QVERIFY(longTitle.startsWith(painted.chopped(1)));
        QVERIFY(painted.size() > 2);
        QCOMPARE(accessible(label).text(QAccessible::Name), longTitle);
        QCOMPARE(shownToolTip(label), plainToolTip(longTitle));
    }

    void theHelpStandsBelowAnElidedText()
    {
        TextLabel label(longTitle);
        label.setHelp(awkward);
        label.resize(label.sizeHint());
        QCOMPARE(shownToolTip(label), plainToolTip(awkward));
        label.resize(120, label.height());
        QCOMPARE(shownToolTip(label), plainToolTip(longTitle + QLatin1Char('\n') + awkward));
        QCOMPARE(accessible(label).text(QAccessible::Description), awkward);
    }

    void lineBreaksAreShownAsSpaces()
    {
        TextLabel label(QStringLiteral("one\ntwo\r\nthree"));
        label.resize(label.sizeHint());
        QCOMPARE(paintedText(label), QStringLiteral("one two three"));
        QCOMPARE(label.text(), QStringLiteral("one\ntwo\r\nthree"));
    }

    void aNewTextReplacesTheOld()
    {
        TextLabel label(awkward);
        label.setText(QStringLiteral("second"));
        label.resize(label.sizeHint());
        QCOMPARE(paintedText(label), QStringLiteral("second"));
        QCOMPARE(accessible(label).text(QAccessible::Name), QStringLiteral("second"));
    }

    void aTitleMayTakeTwoLines()
    {
        TextLabel label(longTitle);
        QVERIFY(!label.hasHeightForWidth());
        label.setMaximumLines(2);
        const int line = label.sizeHint().height();
        QVERIFY(label.hasHeightForWidth());
        QCOMPARE(label.heightForWidth(2000), line);
        QCOMPARE(label.heightForWidth(label.sizeHint().width() * 2 / 3), 2 * line);
        QCOMPARE(label.heightForWidth(60), 2 * line);
        label.resize(label.sizeHint().width() * 2 / 3, 2 * line);
        QVERIFY(!label.isElided());
        QCOMPARE(paintedText(label).remove(QLatin1Char(' ')), QString(longTitle).remove(QLatin1Char(' ')));
        label.resize(60, 2 * line);
        QVERIFY(label.isElided());
    }

    void aLayoutGivesATitleItsTwoLines()
    {
        QWidget window;
        QVBoxLayout column(&window);
        TextLabel title(longTitle);
        title.setMaximumLines(2);
        column.addWidget(&title);
        column.addStretch();
        const int line = title.sizeHint().height();
        window.resize(200, 300);
        column.activate();
        QCOMPARE(title.height(), 2 * line);
        title.setText(QStringLiteral("short"));
        column.activate();
        QCOMPARE(title.height(), line);
    }

    void aStruckOutTextLooksSo()
    {
        TextLabel label(QStringLiteral("m m m m"));
        label.resize(label.sizeHint());
        const QImage before = label.grab().toImage();
        label.setStruckOut(true);
        QVERIFY(label.grab().toImage() != before);
    }

    void theColourIsOneOfTheTheme()
    {
        TextLabel label(QStringLiteral("HHH"));
        QFont font = label.font();
        font.setPixelSize(40);
        label.setFont(font);
        label.resize(label.sizeHint());
        const auto holds = [&label](const QColor &color) {
            const QImage image = label.grab().toImage();
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, image.height() / 2) == color)
                    return true;
            }
            return false;
        };
        QVERIFY(holds(Theme::current().ink));
        label.setColor(&Theme::pink);
        QVERIFY(holds(Theme::current().pink));
        QVERIFY(!holds(Theme::current().ink));
    }

    void aPlainLabelLeavesClicksAndKeysToItsParent()
    {
        TextLabel label(awkward);
        QSignalSpy clicks(&label, &TextLabel::clicked);
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&label, &press);
        QVERIFY(!press.isAccepted());
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&label, &key);
        QVERIFY(!key.isAccepted());
        QCOMPARE(clicks.size(), 0);
        QCOMPARE(label.focusPolicy(), Qt::NoFocus);
    }

    void aClickableLabelActsOnClickKeysAndAssistiveTechnology()
    {
        TextLabel label(awkward);
        label.setClickable(true);
        label.resize(label.sizeHint());
        QSignalSpy clicks(&label, &TextLabel::clicked);
        QTest::mouseClick(&label, Qt::LeftButton);
        QCOMPARE(clicks.size(), 1);
        QTest::keyClick(&label, Qt::Key_Return);
        QTest::keyClick(&label, Qt::Key_Space);
        QCOMPARE(clicks.size(), 3);
        QCOMPARE(accessible(label).role(), QAccessible::Button);
        QAccessibleActionInterface *actions = accessible(label).actionInterface();
        QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicks.size(), 4);
        QCOMPARE(label.focusPolicy(), Qt::TabFocus);
    }

    void aPressThatEndsOutsideIsNoClick()
    {
        TextLabel label(awkward);
        label.setClickable(true);
        label.resize(label.sizeHint());
        QSignalSpy clicks(&label, &TextLabel::clicked);
        QTest::mousePress(&label, Qt::LeftButton);
        QTest::mouseRelease(&label, Qt::LeftButton, Qt::NoModifier, QPoint(-20, -20));
        QCOMPARE(clicks.size(), 0);
        QTest::mouseClick(&label, Qt::RightButton);
        QCOMPARE(clicks.size(), 0);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::TextLabelTest)
#include "text_label_test.moc"
