// SPDX-License-Identifier: MIT
#include "look/utility_window.h"
#include "support/offscreen_silence.h"
#include "support/test_case.h"

#include <QKeyEvent>
#include <QPointer>
#include <QSignalSpy>
#include <QWindow>

namespace wrenfold {

namespace {

/// A field that keeps Escape for itself while something is composed in it.
struct ComposingField : QWidget
{
    bool isComposing = false;

    void keyPressEvent(QKeyEvent *event) override { event->setAccepted(isComposing); }
};

struct Shown
{
    OffscreenSilence silence;
    ComposingField *content = new ComposingField;
    UtilityWindow window{QStringLiteral("Wren & Fold"), QSize(440, 520)};

    Shown()
    {
        content->setFocusPolicy(Qt::StrongFocus);
        window.setContent(content);
        window.comeToFront();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        content->setFocus();
    }
};

} // namespace

class UtilityWindowTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void itHasATitleAFrameAndTheSizeOfItsContent()
    {
        const Shown shown;
        QCOMPARE(shown.window.windowTitle(), QStringLiteral("Wren & Fold"));
        QCOMPARE(shown.window.size(), QSize(440, 520));
        QCOMPARE(shown.content->geometry(), QRect(0, 0, 440, 520));
        QCOMPARE(shown.window.windowType(), Qt::Window);
        QVERIFY(!shown.window.windowFlags().testFlag(Qt::FramelessWindowHint));
    }

    void itsTitleBarShowsTheProgramsIcon()
    {
        const Shown shown;
        const QImage image = shown.window.windowIcon().pixmap(128).toImage();
        QCOMPARE(image.size(), QSize(128, 128));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(image.pixelColor(46, 46), QColor(0x2b3794)); // The bird's eye.
    }

    void theContentFollowsTheWindowsSize()
    {
        Shown shown;
        shown.window.resize(500, 610);
        QCOMPARE(shown.content->geometry(), QRect(0, 0, 500, 610));
    }

    void theContentIsTheWindows()
    {
        QPointer<QWidget> content = new QWidget;
        {
            UtilityWindow window(QStringLiteral("Chat"), QSize(100, 100));
            window.setContent(content);
            QCOMPARE(window.content(), content.data());
        }
        QVERIFY(content.isNull());
    }

    void escapeHidesItUnlessTheFieldKeepsTheKey()
    {
        Shown shown;
        shown.content->isComposing = true;
        QTest::keyClick(shown.content, Qt::Key_Escape);
        QVERIFY(shown.window.isVisible());
        shown.content->isComposing = false;
        QTest::keyClick(shown.content, Qt::Key_A);
        QVERIFY(shown.window.isVisible());
        QTest::keyClick(shown.content, Qt::Key_Escape);
        QVERIFY(!shown.window.isVisible());
    }

    void closingHidesItWithItsContentAndPlace()
    {
        Shown shown;
        shown.window.move(70, 50);
        const QRect place = shown.window.geometry();
        QVERIFY(shown.window.close());
        QVERIFY(!shown.window.isVisible());
        shown.window.comeToFront();
        QVERIFY(shown.window.isVisible());
        QCOMPARE(shown.window.content(), shown.content);
        QCOMPARE(shown.window.geometry(), place);
    }

    void eachTimeItComesToTheFrontThisIsSaidBeforeItIsInSight()
    {
        const OffscreenSilence silence;
        UtilityWindow window(QStringLiteral("Chat"), QSize(100, 100));
        QList<bool> wasVisible;
        QObject::connect(&window, &UtilityWindow::aboutToComeToFront, &window, [&](QWindow *native) {
            QCOMPARE(native, window.windowHandle());
            wasVisible.append(native->isVisible());
        });
        window.comeToFront();
        QCOMPARE(wasVisible, QList<bool>{false});
        window.comeToFront();
        QCOMPARE(wasVisible, QList<bool>({false, true}));
        window.hide();
        window.comeToFront();
        QCOMPARE(wasVisible, QList<bool>({false, true, false}));
    }

    void whatIsMinimizedComesBackInTheSizeItHad_data()
    {
        QTest::addColumn<Qt::WindowStates>("before");
        QTest::newRow("as it was made") << Qt::WindowStates(Qt::WindowNoState);
        QTest::newRow("maximized") << Qt::WindowStates(Qt::WindowMaximized);
    }
    void whatIsMinimizedComesBackInTheSizeItHad()
    {
        QFETCH(Qt::WindowStates, before);
        Shown shown;
        shown.window.setWindowState(before);
        shown.window.setWindowState(before | Qt::WindowMinimized);
        shown.window.comeToFront();
        QCOMPARE(shown.window.windowState() & ~Qt::WindowActive, before);
        QVERIFY(QTest::qWaitForWindowActive(&shown.window));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::UtilityWindowTest)
#include "utility_window_test.moc"
