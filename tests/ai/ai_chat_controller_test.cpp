// SPDX-License-Identifier: MIT
#include "ai/ai_chat_controller.h"
#include "ai/ai_chat_view.h"
#include "look/text_field.h"
#include "support/fake_panel_window.h"
#include "support/offscreen_silence.h"
#include "support/test_case.h"
#include "views/view_probes.h"

#include <QWindow>

namespace wrenfold {

namespace {

struct Desk
{
    OffscreenSilence silence;
    StoreOnFakes fakes{TaskList{}};
    FakePanelWindow ability;
    AIChatController controller{fakes.store, ability};

    [[nodiscard]] UtilityWindow &window() { return controller.window(); }
    [[nodiscard]] AIChatView *view() { return window().findChild<AIChatView *>(); }
    [[nodiscard]] TextField *field() { return window().findChild<TextField *>(); }
};

} // namespace

/// The chat's window.
class AIChatControllerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowIsMadeAtOnceAndHiddenUntilItIsShown()
    {
        Desk desk;
        QVERIFY(!desk.window().isVisible());
        QCOMPARE(desk.window().windowTitle(), QStringLiteral("Wrenfold AI"));
        QCOMPARE(desk.window().size(), QSize(440, 520));
    }

    void itFloatsOnEveryWorkspaceEachTimeItIsShown()
    {
        Desk desk;
        for (int i = 0; i < 2; ++i) {
            desk.controller.show();
            const FakePanelWindow::Companion expected{desk.window().windowHandle(), CompanionKind::Floating};
            QCOMPARE(desk.ability.takeCompanions(), QList{expected});
            desk.window().hide();
        }
    }

    void theComposerHasTheFocusEachTimeItIsShown()
    {
        Desk desk;
        desk.controller.show();
        QVERIFY(QTest::qWaitForWindowActive(&desk.window()));
        QVERIFY(desk.field()->hasFocus());
        QTest::keyClick(desk.field(), Qt::Key_Tab);
        QVERIFY(!desk.field()->hasFocus());
        desk.controller.show();
        QVERIFY(desk.field()->hasFocus());
    }

    void closingAndReopeningTheWindowKeepsTheTranscriptAndTheDraft()
    {
        Desk desk;
        desk.controller.show();
        QVERIFY(click(desk.window(), QStringLiteral("NOW分割")));
        type(desk.field(), QStringLiteral("half a thou"));
        const AIChatView *view = desk.view();
        const QList<AIChatMessage> messages = view->state().messages;
        QCOMPARE(messages.size(), 2);
        desk.window().close();
        QVERIFY(!desk.window().isVisible());
        desk.controller.show();
        QCOMPARE(desk.view(), view);
        QCOMPARE(view->state().messages, messages);
        QCOMPARE(desk.field()->text(), QStringLiteral("half a thou"));
    }

    void escapeHidesTheWindow()
    {
        Desk desk;
        desk.controller.show();
        QTest::keyClick(desk.field(), Qt::Key_Escape);
        QVERIFY(!desk.window().isVisible());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::AIChatControllerTest)
#include "ai_chat_controller_test.moc"
