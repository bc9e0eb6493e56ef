// SPDX-License-Identifier: MIT
#include "model/saved_state.h"
#include "model/uuid_text.h"
#include "support/test_case.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

namespace wrenfold {

namespace {

const QString idText = QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-0123456789AB");

const QByteArray taskText =
    R"({"id":"DEADBEEF-12AB-4CD3-8E0F-0123456789AB","title":"t","isDone":true,"createdAt":1.5,)"
    R"("completedAt":2.5,"parentID":"DEADBEEF-12AB-4CD3-8E0F-0123456789AC","isExpanded":true,)"
    R"("isDeferred":true,"quadrant":"urgentImportant"})";
const QByteArray appText = R"({"id":"i","name":"n","bundleIdentifier":"b","path":"p"})";

/// A document with every key there is, none of them at its default.
const QByteArray documentText =
    R"({"tasks":[)" + taskText +
    R"(],"activeTaskID":"DEADBEEF-12AB-4CD3-8E0F-0123456789AB","mediumGoal":"g","isTodoListHidden":true,)"
    R"("isFocusGuardEnabled":true,"blockedApps":[)" +
    appText +
    R"(],"blockedAppNames":["x"],"selectedAIProvider":"Ollama","apiKeyOverride":"k","openRouterModel":"m",)"
    R"("codexIntegrationEnabled":true,"chatGPTIntegrationEnabled":true,"ollamaIntegrationEnabled":true,)"
    R"("ollamaBaseURL":"u","autoSortAfterAdding":true,"isCompletedSectionExpanded":true,)"
    R"("isDeferredSectionExpanded":false,"isQuadrantBoardVisible":true,"isHardPinned":false,)"
    R"("workDurationMinutes":50,"breakDurationMinutes":10,"launchAtLogin":true,"sprintNudgesEnabled":false,)"
    R"("alwaysShowMenubarTimer":false})";

enum class Kind { Bool, Text, Integer, Date, Identifier, Quadrant, Array };

struct Key
{
    const char *name;
    Kind kind;
};

constexpr Key stateKeys[] = {
    {"tasks", Kind::Array},
    {"activeTaskID", Kind::Identifier},
    {"mediumGoal", Kind::Text},
    {"isTodoListHidden", Kind::Bool},
    {"isFocusGuardEnabled", Kind::Bool},
    {"blockedApps", Kind::Array},
    {"blockedAppNames", Kind::Array},
    {"selectedAIProvider", Kind::Text},
    {"apiKeyOverride", Kind::Text},
    {"openRouterModel", Kind::Text},
    {"codexIntegrationEnabled", Kind::Bool},
    {"chatGPTIntegrationEnabled", Kind::Bool},
    {"ollamaIntegrationEnabled", Kind::Bool},
    {"ollamaBaseURL", Kind::Text},
    {"autoSortAfterAdding", Kind::Bool},
    {"isCompletedSectionExpanded", Kind::Bool},
    {"isDeferredSectionExpanded", Kind::Bool},
    {"isQuadrantBoardVisible", Kind::Bool},
    {"isHardPinned", Kind::Bool},
    {"workDurationMinutes", Kind::Integer},
    {"breakDurationMinutes", Kind::Integer},
    {"launchAtLogin", Kind::Bool},
    {"sprintNudgesEnabled", Kind::Bool},
    {"alwaysShowMenubarTimer", Kind::Bool},
};
constexpr Key taskKeys[] = {
    {"id", Kind::Identifier},   {"title", Kind::Text},       {"isDone", Kind::Bool},
    {"createdAt", Kind::Date},  {"completedAt", Kind::Date}, {"parentID", Kind::Identifier},
    {"isExpanded", Kind::Bool}, {"isDeferred", Kind::Bool},  {"quadrant", Kind::Quadrant},
};
constexpr Key appKeys[] = {
    {"id", Kind::Text}, {"name", Kind::Text}, {"bundleIdentifier", Kind::Text}, {"path", Kind::Text}};

/// JSON texts of which none is a value of the kind.
QList<QByteArray> wrongValues(Kind kind)
{
    QList<QByteArray> wrong = {"{}"};
    if (kind != Kind::Bool)
        wrong << "true"
              << "false";
    if (kind != Kind::Text)
        wrong << R"("text")"
              << R"("")"
              << R"("1")"
              << R"("true")";
    if (kind != Kind::Integer && kind != Kind::Date)
        wrong << "0"
              << "1"
              << "1.5";
    if (kind == Kind::Integer)
        wrong << "25.5"
              << "-0.5"
              << "1e300"
              << "-1e300"
              << "9223372036854775808"
              << "1e-5";
    if (kind == Kind::Identifier)
        wrong << R"("{DEADBEEF-12AB-4CD3-8E0F-0123456789AB}")"
              << R"("DEADBEEF12AB4CD38E0F0123456789AB")";
    if (kind == Kind::Quadrant)
        wrong << R"("urgent")"
              << R"("URGENTIMPORTANT")";
    if (kind == Kind::Array)
        wrong << "[0]"
              << "[null]"
              << "[[]]"
              << "[true]";
    else
        wrong << "[]";
    return wrong;
}

/// The object with one member replaced by a value given as JSON text. Both are one-line objects.
QByteArray withMember(const QByteArray &object, const QByteArray &key, const QByteArray &value)
{
    QJsonObject json = QJsonDocument::fromJson(object).object();
    const QString marker = QStringLiteral("@here@");
    json.insert(QString::fromUtf8(key), marker);
    return QJsonDocument(json).toJson(QJsonDocument::Compact).replace("\"@here@\"", value);
}

QByteArray withoutMember(const QByteArray &object, const QByteArray &key)
{
    QJsonObject json = QJsonDocument::fromJson(object).object();
    json.remove(QString::fromUtf8(key));
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

QByteArray withTask(const QByteArray &task)
{
    return withMember(documentText, "tasks", '[' + task + ']');
}

QByteArray withApp(const QByteArray &app)
{
    return withMember(documentText, "blockedApps", '[' + app + ']');
}

} // namespace

class SavedStateDecodeTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyKeyIsRead()
    {
        const std::optional<SavedState> state = decodeSavedState(documentText);
        QVERIFY(state);
        QCOMPARE(state->tasks.size(), 1);
        QCOMPARE(state->activeTaskID, uuidFromText(idText));
        QCOMPARE(state->mediumGoal, QStringLiteral("g"));
        QVERIFY(state->isTodoListHidden);
        QVERIFY(state->isFocusGuardEnabled);
        const BlockedApp app = {QStringLiteral("i"), QStringLiteral("n"), QStringLiteral("b"),
                                QStringLiteral("p")};
        QCOMPARE(state->blockedApps, QList<BlockedApp>{app});
        QCOMPARE(state->selectedAIProvider, AIProvider::ollama);
        QCOMPARE(state->apiKeyOverride, QStringLiteral("k"));
        QCOMPARE(state->openRouterModel, QStringLiteral("m"));
        QVERIFY(state->codexIntegrationEnabled);
        QVERIFY(state->chatGPTIntegrationEnabled);
        QVERIFY(state->ollamaIntegrationEnabled);
        QCOMPARE(state->ollamaBaseURL, QStringLiteral("u"));
        QVERIFY(state->autoSortAfterAdding);
        QVERIFY(state->isCompletedSectionExpanded);
        QVERIFY(!state->isDeferredSectionExpanded);
        QVERIFY(state->isQuadrantBoardVisible);
        QVERIFY(!state->isHardPinned);
        QCOMPARE(state->workDurationMinutes, 50);
        QCOMPARE(state->breakDurationMinutes, 10);
        QVERIFY(state->launchAtLogin);
        QVERIFY(!state->sprintNudgesEnabled);
        QVERIFY(!state->alwaysShowMenubarTimer);
    }

    void onlyTasksAndIsHardPinnedAreRequired()
    {
        const std::optional<SavedState> state = decodeSavedState(R"({"tasks":[],"isHardPinned":false})");
        QVERIFY(state);
        SavedState expected;
        expected.isHardPinned = false;
        QCOMPARE(*state, expected);
        QVERIFY(!decodeSavedState(R"({"tasks":[]})"));
        QVERIFY(!decodeSavedState(R"({"isHardPinned":false})"));
    }

    void aValueOfAWrongTypeDoesNotDecode_data()
    {
        QTest::addColumn<QByteArray>("document");
        const auto add = [](const char *object, const Key &key, auto documentWith) {
            for (const QByteArray &value : wrongValues(key.kind)) {
                QTest::newRow((QByteArray(object) + ' ' + key.name + ' ' + value).constData())
                    << documentWith(value);
            }
        };
        for (const Key &key : stateKeys)
            add("document", key, [&](const QByteArray &v) { return withMember(documentText, key.name, v); });
        for (const Key &key : taskKeys)
            add("task", key,
                [&](const QByteArray &v) { return withTask(withMember(taskText, key.name, v)); });
        for (const Key &key : appKeys)
            add("app", key, [&](const QByteArray &v) { return withApp(withMember(appText, key.name, v)); });
    }

    void aValueOfAWrongTypeDoesNotDecode()
    {
        QFETCH(QByteArray, document);
        QVERIFY(QJsonDocument::fromJson(document).isObject());
        QVERIFY(!decodeSavedState(document));
    }

    void aNullForAnOptionalOrDefaultedKeyCountsAsAbsent_data()
    {
        QTest::addColumn<QByteArray>("withNull");
        QTest::addColumn<QByteArray>("without");
        for (const Key &key : stateKeys) {
            if (qstrcmp(key.name, "tasks") != 0 && qstrcmp(key.name, "isHardPinned") != 0)
                QTest::newRow(key.name)
                    << withMember(documentText, key.name, "null") << withoutMember(documentText, key.name);
        }
        for (const auto *key : {"bundleIdentifier", "path"}) {
            QTest::addRow("app %s", key)
                << withApp(withMember(appText, key, "null")) << withApp(withoutMember(appText, key));
        }
        for (const auto *key : {"completedAt", "parentID", "isExpanded", "isDeferred", "quadrant"}) {
            QTest::addRow("task %s", key)
                << withTask(withMember(taskText, key, "null")) << withTask(withoutMember(taskText, key));
        }
    }

    void aNullForAnOptionalOrDefaultedKeyCountsAsAbsent()
    {
        QFETCH(QByteArray, withNull);
        QFETCH(QByteArray, without);
        QVERIFY(decodeSavedState(withNull));
        QCOMPARE(decodeSavedState(withNull), decodeSavedState(without));
    }

    void aNullForARequiredKeyIsAnError_data()
    {
        QTest::addColumn<QByteArray>("document");
        for (const auto *key : {"tasks", "isHardPinned"})
            QTest::newRow(key) << withMember(documentText, key, "null");
        for (const auto *key : {"id", "title", "isDone", "createdAt"})
            QTest::addRow("task %s", key) << withTask(withMember(taskText, key, "null"));
        for (const auto *key : {"id", "name"})
            QTest::addRow("app %s", key) << withApp(withMember(appText, key, "null"));
    }

    void aNullForARequiredKeyIsAnError()
    {
        QFETCH(QByteArray, document);
        QVERIFY(!decodeSavedState(document));
    }

    void anIntegerMayBeWrittenInAnyWay_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("value");
        QTest::newRow("25") << QByteArray("25") << qint64(25);
        QTest::newRow("25.0") << QByteArray("25.0") << qint64(25);
        QTest::newRow("2.5e1") << QByteArray("2.5e1") << qint64(25);
        QTest::newRow("250E-1") << QByteArray("250E-1") << qint64(25);
        QTest::newRow("-3") << QByteArray("-3") << qint64(-3);
        QTest::newRow("-0") << QByteArray("-0") << qint64(0);
        QTest::newRow("largest") << QByteArray("9223372036854775807") << std::numeric_limits<qint64>::max();
        QTest::newRow("smallest") << QByteArray("-9223372036854775808") << std::numeric_limits<qint64>::min();
    }

    void anIntegerMayBeWrittenInAnyWay()
    {
        QFETCH(QByteArray, text);
        QFETCH(qint64, value);
        const std::optional<SavedState> state =
            decodeSavedState(withMember(documentText, "workDurationMinutes", text));
        QVERIFY(state);
        QCOMPARE(state->workDurationMinutes, value);
    }

    void unknownKeysAreIgnored()
    {
        const std::optional<SavedState> expected = decodeSavedState(documentText);
        QCOMPARE(decodeSavedState(withMember(documentText, "later", R"({"a":[1,null]})")), expected);
        QCOMPARE(decodeSavedState(withTask(withMember(taskText, "later", "7"))), expected);
        QCOMPARE(decodeSavedState(withApp(withMember(appText, "later", "null"))), expected);
    }

    void identifiersAreReadInAnyLetterCase()
    {
        QCOMPARE(decodeSavedState(QByteArray(documentText).replace("DEADBEEF", "deadBeef")),
                 decodeSavedState(documentText));
    }

    void anUnknownProviderCountsAsAbsentAndAnyOtherTypeIsAnError()
    {
        const auto decoded = [](const char *value) {
            return decodeSavedState(withMember(documentText, "selectedAIProvider", value));
        };
        for (const auto *text : {R"("Gemini")", R"("")", R"("ollama")"}) {
            QVERIFY(decoded(text));
            QCOMPARE(decoded(text)->selectedAIProvider, AIProvider::openRouter);
        }
        QVERIFY(!decoded("1"));
        QVERIFY(!decoded("[]"));
    }

    void retiredModelsAreReplacedAndAnyOtherIsKept()
    {
        const auto decoded = [](const char *model) {
            return decodeSavedState(withMember(documentText, "openRouterModel", model))->openRouterModel;
        };
        const QString today = QStringLiteral("~anthropic/claude-sonnet-latest");
        QCOMPARE(decoded(R"("openrouter/auto")"), today);
        QCOMPARE(decoded(R"("deepseek/deepseek-chat-v3.1:free")"), today);
        QCOMPARE(decoded(R"("deepseek/deepseek-chat-v3.1")"), today);
        QCOMPARE(decoded(R"("deepseek/deepseek-chat-v3")"), QStringLiteral("deepseek/deepseek-chat-v3"));
        QCOMPARE(decoded(R"("Openrouter/auto")"), QStringLiteral("Openrouter/auto"));
        QCOMPARE(decoded(R"("deepseek/deepseek-chat-v3.1:FREE")"),
                 QStringLiteral("deepseek/deepseek-chat-v3.1:FREE"));
        QCOMPARE(decoded("null"), today);
    }

    void legacyNamesCountOnlyWithoutTheListOfToday()
    {
        const QByteArray old = withoutMember(documentText, "blockedApps");
        const BlockedApp x = {QStringLiteral("x"), QStringLiteral("x"), std::nullopt, std::nullopt};
        QCOMPARE(decodeSavedState(old)->blockedApps, QList<BlockedApp>{x});
        QCOMPARE(decodeSavedState(withMember(old, "blockedAppNames", "[]"))->blockedApps,
                 QList<BlockedApp>());
        QCOMPARE(decodeSavedState(withMember(documentText, "blockedApps", "[]"))->blockedApps,
                 QList<BlockedApp>());
        QCOMPARE(decodeSavedState(withoutMember(old, "blockedAppNames"))->blockedApps, defaultBlockedApps());
    }

    void whatIsNoJsonObjectDoesNotDecode_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("blanks") << QByteArray("  \n");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("array") << QByteArray("[]");
        QTest::newRow("number") << QByteArray("1");
        QTest::newRow("text") << QByteArray("hello");
        QTest::newRow("zeros") << QByteArray(4096, '\0');
        QTest::newRow("cut short") << documentText.chopped(1);
        QTest::newRow("cut in half") << documentText.left(documentText.size() / 2);
        QTest::newRow("more behind") << documentText + "x";
        QTest::newRow("twice") << documentText + documentText;
        QTest::newRow("invalid UTF-8") << QByteArray(documentText).replace("\"g\"", "\"\xC3\x28\"");
        QTest::newRow("lone continuation byte") << QByteArray(documentText).replace("\"g\"", "\"\x80\"");
        QTest::newRow("overlong UTF-8") << QByteArray(documentText).replace("\"g\"", "\"\xC0\xAF\"");
        QTest::newRow("encoded surrogate") << QByteArray(documentText).replace("\"g\"", "\"\xED\xA0\x80\"");
        QTest::newRow("number too large") << withTask(withMember(taskText, "createdAt", "1e400"));
        QTest::newRow("NaN") << withTask(withMember(taskText, "createdAt", "NaN"));
    }

    void whatIsNoJsonObjectDoesNotDecode()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!decodeSavedState(bytes));
    }

    void nestingAHundredThousandDeepDoesNotDecode_data()
    {
        QTest::addColumn<QByteArray>("open");
        QTest::addColumn<QByteArray>("close");
        QTest::newRow("arrays") << QByteArray("[") << QByteArray("]");
        QTest::newRow("objects") << QByteArray(R"({"a":)") << QByteArray("}");
    }

    void nestingAHundredThousandDeepDoesNotDecode()
    {
        QFETCH(QByteArray, open);
        QFETCH(QByteArray, close);
        constexpr int depth = 100'000;
        const QByteArray nested = open.repeated(depth) + "1" + close.repeated(depth);
        QVERIFY(!decodeSavedState(nested));
        QVERIFY(!decodeSavedState(open.repeated(depth)));
        QVERIFY(!decodeSavedState(withMember(documentText, "later", nested)));
        QVERIFY(!decodeSavedState(withMember(documentText, "tasks", nested)));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::SavedStateDecodeTest)
#include "saved_state_decode_test.moc"
