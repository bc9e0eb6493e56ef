// SPDX-License-Identifier: MIT
#include "look/selectable_text.h"
#include "support/offscreen_silence.h"
#include "support/painted_text.h"
#include "support/test_case.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMimeData>

namespace wrenfold {

namespace {

const QString awkward = QStringLiteral("A & B_c <b>x</b>");

void showFitted(SelectableText &text, const QString &content, int width)
{
    text.setText(content);
    text.resize(text.fittedTo(width));
    text.show();
}

} // namespace

class SelectableTextTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void textIsShownAndReadExactly()
    {
        SelectableText text;
        showFitted(text, awkward, 300);
        QCOMPARE(paintedText(text), awkward);
        QCOMPARE(QAccessible::queryAccessibleInterface(&text)->text(QAccessible::Name), awkward);
    }

    void aShortTextTakesItsOwnWidth()
    {
        SelectableText text;
        showFitted(text, QStringLiteral("ab"), 300);
        QVERIFY(text.width() < 40);
        QVERIFY(text.height() < 2 * text.fontMetrics().height());
    }

    void whatHasNoPlaceToBreakIsBrokenAnywhere()
    {
        SelectableText text;
        showFitted(text, QString(200, QLatin1Char('x')), 100);
        QVERIFY(text.width() <= 100);
        QVERIFY(text.height() > 5 * text.fontMetrics().height());
    }

    void aLineFromTheRightEndsAtTheEdge()
    {
        SelectableText text;
        showFitted(text, QStringLiteral("שלום"), 300);
        QVERIFY(text.document()->size().width() <= text.width());
    }

    void paddingSurroundsTheText()
    {
        SelectableText text;
        showFitted(text, QStringLiteral("ab"), 300);
        const QSize plain = text.size();
        text.setPadding({11, 8, 12, 9});
        QCOMPARE(text.fittedTo(300), plain + QSize(23, 17));
        text.setText(QStringLiteral("ab"));
        QCOMPARE(text.fittedTo(300), plain + QSize(23, 17));
    }

    void aSelectionIsCopiedWithoutOurColours()
    {
        SelectableText text;
        showFitted(text, QStringLiteral("one two\nthree"), 300);
        QTest::mouseDClick(text.viewport(), Qt::LeftButton, {}, {4, 4});
        QTest::keyClick(&text, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("one"));
        QCOMPARE(QApplication::clipboard()->mimeData()->formats().filter(QStringLiteral("html")),
                 QStringList());
        QTest::keyClick(&text, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&text, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("one two\nthree"));
    }

    void withoutASelectionAllIsCopied()
    {
        SelectableText text;
        showFitted(text, awkward, 300);
        QTest::keyClick(&text, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), awkward);
    }

    void theMenuSpeaksTheProgramsLanguage()
    {
        const OffscreenSilence silence;
        SelectableText text;
        showFitted(text, awkward, 300);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(&text, &event);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QStringList entries;
        for (const QAction *action : menu->actions())
            entries.append(action->text());
        QCOMPARE(entries, QStringList({QStringLiteral("コピー"), QStringLiteral("すべて選択")}));
        menu->actions()[1]->trigger();
        QCOMPARE(text.textCursor().selectedText(), awkward);
    }

    void theMenuOfALongTextOpensInItsPartInSight()
    {
        const OffscreenSilence silence;
        QWidget view;
        view.resize(200, 100);
        SelectableText text(&view);
        showFitted(text, QStringLiteral("line\n").repeated(200), 180);
        view.show();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(&text, &event);
        const QWidget *menu = QApplication::activePopupWidget();
        QVERIFY(menu);
        QVERIFY(view.rect().contains(view.mapFromGlobal(menu->pos())));
        QApplication::activePopupWidget()->close();
    }

    void otherKeysAreLeftToWhatLiesAround()
    {
        SelectableText text;
        showFitted(text, awkward, 300);
        for (const int key : {Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Space, Qt::Key_Escape, Qt::Key_X}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            event.accept();
            QCoreApplication::sendEvent(&text, &event);
            QVERIFY(!event.isAccepted());
        }
        QCOMPARE(text.toPlainText(), awkward);
    }

    void itsColoursFollowTheTheme()
    {
        const QPalette before = QApplication::palette();
        SelectableText text;
        text.show();
        text.setColors(&Theme::onAccent, &Theme::onAccent, &Theme::accent);
        for (const QColor &window : {QColor(Qt::white), QColor(Qt::black)}) {
            QApplication::setPalette(QPalette(window));
            QTRY_COMPARE(text.palette().color(QPalette::Text), Theme::current().onAccent);
            QTRY_COMPARE(text.palette().color(QPalette::HighlightedText), Theme::current().accent);
        }
        QApplication::setPalette(before);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::SelectableTextTest)
#include "selectable_text_test.moc"
