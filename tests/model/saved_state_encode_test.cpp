// SPDX-License-Identifier: MIT
#include "model/saved_state.h"

#include "model/store_on_fakes.h"
#include "support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <bit>

namespace wrenfold {

namespace {

QStringList keysOf(const SavedState &state)
{
    return QJsonDocument::fromJson(encodeSavedState(state)).object().keys();
}

SavedState stateWith(const TaskItem &task)
{
    SavedState state;
    state.tasks = {task};
    return state;
}

} // namespace

class SavedStateEncodeTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theDefaultStateIsWrittenCompactInTheOrderOfTheKeys()
    {
        const QByteArray expected =
            R"({"tasks":[],"mediumGoal":"","isTodoListHidden":false,"isFocusGuardEnabled":false,)"
            R"("blockedApps":[{"id":"jp.naver.line.mac","name":"LINE","bundleIdentifier":"jp.naver.line.mac"}],)"
            R"("selectedAIProvider":"OpenRouter","apiKeyOverride":"",)"
            R"("openRouterModel":"~anthropic/claude-sonnet-latest","codexIntegrationEnabled":false,)"
            R"("chatGPTIntegrationEnabled":false,"ollamaIntegrationEnabled":false,)"
            R"("ollamaBaseURL":"http://127.0.0.1:11434","autoSortAfterAdding":false,)"
            R"("isCompletedSectionExpanded":false,"isDeferredSectionExpanded":true,)"
            R"("isQuadrantBoardVisible":false,"isHardPinned":true,"workDurationMinutes":25,)"
            R"("breakDurationMinutes":5,"launchAtLogin":false,"sprintNudgesEnabled":true,)"
            R"("alwaysShowMenubarTimer":true})";
        QCOMPARE(encodeSavedState({}), expected);
    }

    void theNowTaskIsWrittenOnlyWhenThereIsOne()
    {
        SavedState state;
        QVERIFY(!keysOf(state).contains(QStringLiteral("activeTaskID")));
        state.activeTaskID = QUuid::createUuid();
        const QJsonObject json = QJsonDocument::fromJson(encodeSavedState(state)).object();
        QCOMPARE(json.value(QStringLiteral("activeTaskID")).toString(),
                 state.activeTaskID->toString(QUuid::WithoutBraces).toUpper());
    }

    void legacyNamesAreNeverWritten()
    {
        const auto state =
            decodeSavedState(R"({"tasks":[],"isHardPinned":true,"blockedAppNames":["x"]})").value();
        QVERIFY(!keysOf(state).contains(QStringLiteral("blockedAppNames")));
        QVERIFY(keysOf(state).contains(QStringLiteral("blockedApps")));
    }

    void emptyOptionalsAreLeftOut()
    {
        SavedState state = stateWith(madeTask(QStringLiteral("a")));
        state.blockedApps = {{QStringLiteral("i"), QStringLiteral("n"), std::nullopt, std::nullopt}};
        QVERIFY(!encodeSavedState(state).contains("null"));
        const QJsonObject json = QJsonDocument::fromJson(encodeSavedState(state)).object();
        const QStringList appKeys = {QStringLiteral("id"), QStringLiteral("name")};
        QCOMPARE(json.value(QStringLiteral("blockedApps"))[0].toObject().keys(), appKeys);
        QCOMPARE(json.value(QStringLiteral("tasks"))[0].toObject().size(), 7);
    }

    void anEncodedStateDecodesToItself()
    {
        SavedState state;
        const TaskItem a = madeTask(QStringLiteral("a"), 1.25);
        state.tasks = {a, deferred(done(madeSubtask(QStringLiteral("b"), a)))};
        state.activeTaskID = a.id;
        state.mediumGoal = QStringLiteral("目標");
        state.blockedApps = {{QStringLiteral("i"), QStringLiteral("n"), std::nullopt, QStringLiteral("/p")},
                             {}};
        state.isTodoListHidden = state.isFocusGuardEnabled = true;
        state.selectedAIProvider = AIProvider::codex;
        state.apiKeyOverride = QStringLiteral("key");
        state.openRouterModel = QStringLiteral("model");
        state.codexIntegrationEnabled = true;
        state.chatGPTIntegrationEnabled = state.ollamaIntegrationEnabled = true;
        state.ollamaBaseURL = QStringLiteral("http://[::1]:1");
        state.autoSortAfterAdding = state.isCompletedSectionExpanded = true;
        state.isDeferredSectionExpanded = false;
        state.isQuadrantBoardVisible = true;
        state.isHardPinned = false;
        state.workDurationMinutes = 90;
        state.breakDurationMinutes = 30;
        state.launchAtLogin = true;
        state.sprintNudgesEnabled = state.alwaysShowMenubarTimer = false;
        QCOMPARE(decodeSavedState(encodeSavedState(state)), std::optional(state));
    }

    void datesComeBackBitForBit_data()
    {
        QTest::addColumn<double>("date");
        QTest::newRow("0") << 0.0;
        QTest::newRow("1e-300") << 1e-300;
        QTest::newRow("smallest") << 5e-324;
        QTest::newRow("largest") << 1.7976931348623157e308;
        QTest::newRow("usual") << 795484800.1234567;
    }

    void datesComeBackBitForBit()
    {
        QFETCH(double, date);
        TaskItem task = madeTask(QStringLiteral("a"), date);
        task.completedAt = Timestamp{date};
        const TaskItem read = decodeSavedState(encodeSavedState(stateWith(task))).value().tasks.first();
        QCOMPARE(std::bit_cast<quint64>(read.createdAt.secondsSince2001), std::bit_cast<quint64>(date));
        QCOMPARE(std::bit_cast<quint64>(read.completedAt->secondsSince2001), std::bit_cast<quint64>(date));
    }

    void everyTextComesBack_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("quotes") << QStringLiteral(R"(a "b" \c\ /d/)");
        QTest::newRow("lone high surrogate") << QStringLiteral("a") + QChar(0xD83D) + QStringLiteral("b");
        QTest::newRow("lone low surrogate") << QString(QChar(0xDE00));
        QTest::newRow("U+0000") << QStringLiteral("a") + QChar(0) + QStringLiteral("b");
        QTest::newRow("U+FFFF") << QStringLiteral("a\uFFFF");
        QTest::newRow("U+2028") << QStringLiteral("a\u2028b\u2029");
        QTest::newRow("U+FEFF first") << QStringLiteral("\uFEFFa\uFEFF");
        QTest::newRow("emoji") << QStringLiteral("👨‍👩‍👧‍👦🇯🇵👍🏽");
        QTest::newRow("line breaks") << QStringLiteral("a\r\n\tb\u0085");
        QTest::newRow("long") << QStringLiteral("長い").repeated(100'000);
    }

    void everyTextComesBack()
    {
        QFETCH(QString, text);
        SavedState state = stateWith(madeTask(text));
        state.mediumGoal = text;
        state.apiKeyOverride = text;
        QCOMPARE(decodeSavedState(encodeSavedState(state)), std::optional(state));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::SavedStateEncodeTest)
#include "saved_state_encode_test.moc"
