// SPDX-License-Identifier: MIT
#include "platform/linux/panel_standing.h"
#include "support/test_case.h"

Q_DECLARE_METATYPE(wrenfold::PanelStanding)
Q_DECLARE_METATYPE(wrenfold::PanelSurroundings)

namespace wrenfold {

class PanelStandingTest : public TestCase
{
    Q_OBJECT

    static constexpr uint32_t video = 7; ///< Full-screen, over the panel's place.
    static constexpr uint32_t editor = 8;

private Q_SLOTS:
    void thePanelStandsAsItsLevelAndWhatIsAroundItAsk_data()
    {
        QTest::addColumn<PanelStanding>("current");
        QTest::addColumn<PanelLevel>("level");
        QTest::addColumn<PanelSurroundings>("around");
        QTest::addColumn<PanelStanding>("next");
        const PanelStanding above{PanelStanding::Kind::Above};
        const PanelStanding ordinary{PanelStanding::Kind::Ordinary};
        const auto unmanaged = [](uint32_t active) {
            return PanelStanding{PanelStanding::Kind::Unmanaged, active};
        };
        constexpr PanelLevel floating = PanelLevel::Floating;
        constexpr PanelLevel high = PanelLevel::AboveFullScreen;
        const PanelSurroundings alone;
        const PanelSurroundings editorInFront{false, false, editor, {}, {}};
        const PanelSurroundings videoBelow{false, false, video, {video}, {}};
        const PanelSurroundings videoAbove{false, false, video, {video}, {video}};
        const PanelSurroundings editorOverVideo{false, false, editor, {video}, {}};
        const PanelSurroundings betweenTwoWindows{false, false, 0, {video}, {}};
        const PanelSurroundings typing{true, true, 0, {video}, {}};
        const PanelSurroundings typingAlone{true, true, 0, {}, {}};
        const PanelSurroundings typingBeside{true, false, 0, {video}, {}};

        QTest::newRow("nothing there") << above << high << alone << above;
        QTest::newRow("ordinary windows") << above << high << editorInFront << above;
        QTest::newRow("pinned, kept above by the window manager") << above << high << videoBelow << above;
        QTest::newRow("pinned and covered") << above << high << videoAbove << unmanaged(video);
        QTest::newRow("pinned and covered while its last typing ends")
            << above << high << PanelSurroundings{true, true, video, {video}, {video}} << above;
        QTest::newRow("it stays out while covered")
            << unmanaged(video) << high << videoBelow << unmanaged(video);
        QTest::newRow("between two windows")
            << unmanaged(video) << high << betweenTwoWindows << unmanaged(video);
        QTest::newRow("typing in it") << unmanaged(video) << high << typing << unmanaged(video);
        QTest::newRow("typing, though nothing covers it any more")
            << unmanaged(video) << high << typingAlone << unmanaged(video);
        QTest::newRow("typing, though it is unpinned meanwhile")
            << unmanaged(video) << floating << typing << unmanaged(video);
        QTest::newRow("typing in another window of ours")
            << unmanaged(video) << high << typingBeside << above;
        QTest::newRow("nothing covers it any more") << unmanaged(video) << high << alone << above;
        QTest::newRow("another window is in front: try")
            << unmanaged(video) << high << editorOverVideo << above;
        QTest::newRow("tried in vain")
            << above << high << PanelSurroundings{false, false, editor, {video}, {video}}
            << unmanaged(editor);
        QTest::newRow("after that it is not tried again")
            << unmanaged(editor) << high << editorOverVideo << unmanaged(editor);
        QTest::newRow("unpinned while covered") << unmanaged(video) << floating << videoBelow << ordinary;

        QTest::newRow("floating above ordinary windows") << above << floating << editorInFront << above;
        QTest::newRow("floating gives way") << above << floating << videoBelow << ordinary;
        QTest::newRow("floating, covered anyway") << above << floating << videoAbove << ordinary;
        QTest::newRow("floating stays hidden") << ordinary << floating << videoAbove << ordinary;
        QTest::newRow("floating between two windows")
            << ordinary << floating << betweenTwoWindows << ordinary;
        QTest::newRow("floating comes back") << ordinary << floating << editorOverVideo << above;
        QTest::newRow("floating and used") << ordinary << floating << typing << above;
        QTest::newRow("pinned while hidden, which is tried first") << ordinary << high << videoAbove << above;
    }
    void thePanelStandsAsItsLevelAndWhatIsAroundItAsk()
    {
        QFETCH(PanelStanding, current);
        QFETCH(PanelLevel, level);
        QFETCH(PanelSurroundings, around);
        QFETCH(PanelStanding, next);
        const PanelStanding actual = nextStanding(current, level, around);
        QCOMPARE(actual.kind, next.kind);
        QCOMPARE(actual.activeAtLeave, next.activeAtLeave);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PanelStandingTest)
#include "panel_standing_test.moc"
