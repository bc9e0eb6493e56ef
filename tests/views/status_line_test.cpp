// SPDX-License-Identifier: MIT
#include "look/text_button.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "views/status_line.h"
#include "views/view_probes.h"

namespace wrenfold {

namespace {

const QString undoText = QStringLiteral("元に戻す");

struct LineInWindow
{
    QWidget window;
    int undos = 0;
    StatusLine *line = new StatusLine([this] { ++undos; }, &window);

    LineInWindow()
    {
        line->resize(320, line->height());
        window.resize(320, 60);
        window.show();
    }
};

} // namespace

class StatusLineTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void anIdleLineShowsNothing()
    {
        LineInWindow shownLine;
        shownLine.line->setStatus({}, false);
        QCOMPARE(paintedText(*shownLine.line), QString());
        QVERIFY(shown<PaintedButton>(*shownLine.line).isEmpty());
    }

    void aStatusIsShownAndReadExactly()
    {
        LineInWindow shownLine;
        shownLine.line->setStatus(awkward(), false);
        QCOMPARE(paintedText(*shownLine.line), awkward());
        QVERIFY(labelSaying(*shownLine.line, awkward()));
        QVERIFY(!buttonNamed(*shownLine.line, undoText));
    }

    void aDeletionCanBeTakenBackFromTheLine()
    {
        LineInWindow shownLine;
        shownLine.line->setStatus(QStringLiteral("削除しました"), true);
        QVERIFY(labelSaying(*shownLine.line, QStringLiteral("削除しました")));
        QVERIFY(click(*shownLine.line, undoText));
        QTest::keyClick(buttonNamed(*shownLine.line, undoText), Qt::Key_Return);
        QTest::keyClick(buttonNamed(*shownLine.line, undoText), Qt::Key_Space);
        QCOMPARE(shownLine.undos, 3);
        QCOMPARE(faultsOfButtons(*shownLine.line), QStringList());
        shownLine.line->setStatus({}, false);
        QVERIFY(!buttonNamed(*shownLine.line, undoText));
    }

    void withoutAStatusTheOfferSaysWhatItIsFor()
    {
        LineInWindow shownLine;
        shownLine.line->setStatus({}, true);
        QVERIFY(labelSaying(*shownLine.line, QStringLiteral("削除しました")));
    }

    void aLongStatusLeavesRoomForTheWayBack()
    {
        LineInWindow shownLine;
        const QString status = QStringLiteral("とても長い知らせ").repeated(20);
        shownLine.line->setStatus(status, true);
        TextLabel *label = labelSaying(*shownLine.line, status);
        QVERIFY(label && label->isElided());
        QVERIFY(buttonNamed(*shownLine.line, undoText)->x() >= label->geometry().right());
        QCOMPARE(faultsOfButtons(*shownLine.line), QStringList());
    }

    void anOfferThatGoesGivesTheKeyboardBack()
    {
        LineInWindow shownLine;
        auto *before = new TextButton(QStringLiteral("before"), TextButton::Kind::Link, &shownLine.window);
        before->setGeometry(0, 30, 100, 24);
        before->show();
        QWidget::setTabOrder(before, shownLine.line);
        QVERIFY(QTest::qWaitForWindowActive(&shownLine.window));
        shownLine.line->setStatus({}, true);
        before->setFocus(Qt::TabFocusReason);
        QTest::keyClick(before, Qt::Key_Tab);
        QVERIFY(buttonNamed(*shownLine.line, undoText)->hasFocus());
        shownLine.line->setStatus({}, false);
        QVERIFY(before->hasFocus());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::StatusLineTest)
#include "status_line_test.moc"
