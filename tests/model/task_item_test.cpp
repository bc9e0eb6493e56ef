// SPDX-License-Identifier: MIT
#include "model/saved_state.h"
#include "model/uuid_text.h"
#include "support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace wrenfold {

namespace {

const QString idText = QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-0123456789AB");
const QString parentText = QStringLiteral("00000000-0000-4000-8000-000000000001");

QJsonObject minimalTask()
{
    return {{QStringLiteral("id"), idText},
            {QStringLiteral("title"), QStringLiteral("a")},
            {QStringLiteral("isDone"), false},
            {QStringLiteral("createdAt"), 5.5}};
}

TaskItem fullTask()
{
    TaskItem task;
    task.id = uuidFromText(idText).value();
    task.title = QStringLiteral("牛乳を買う");
    task.isDone = true;
    task.createdAt = {795484800.25};
    task.completedAt = Timestamp{795484900.5};
    task.parentID = uuidFromText(parentText);
    task.isExpanded = true;
    task.isDeferred = true;
    task.quadrant = TaskQuadrant::urgentImportant;
    return task;
}

} // namespace

class TaskItemTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aNewTaskHasTheDefaults()
    {
        const TaskItem task = TaskItem::make(QStringLiteral("a"), {7});
        QVERIFY(!task.id.isNull());
        QCOMPARE(task.title, QStringLiteral("a"));
        QVERIFY(!task.isDone);
        QCOMPARE(task.createdAt, Timestamp{7});
        QVERIFY(!task.completedAt);
        QVERIFY(!task.parentID);
        QVERIFY(!task.isExpanded);
        QVERIFY(!task.isDeferred);
        QCOMPARE(task.quadrant, TaskQuadrant::notUrgentNotImportant);
        QVERIFY(task.id != TaskItem::make(QStringLiteral("a"), {7}).id);
    }

    void openIsNeitherDoneNorDeferred()
    {
        TaskItem task = TaskItem::make(QStringLiteral("a"), {});
        QVERIFY(task.isOpen());
        task.isDeferred = true;
        QVERIFY(!task.isOpen());
        task.isDone = true;
        QVERIFY(!task.isOpen());
        task.isDeferred = false;
        QVERIFY(!task.isOpen());
    }

    void twoRecordsThatDifferOnlyInIsExpandedAreNotEqual()
    {
        const TaskItem task = fullTask();
        TaskItem other = task;
        QCOMPARE(other, task);
        other.isExpanded = !other.isExpanded;
        QVERIFY(other != task);
    }

    void everyFieldCountsForEquality()
    {
        const TaskItem task = fullTask();
        const auto differsAfter = [&task](auto change) {
            TaskItem other = task;
            change(other);
            return other != task;
        };
        QVERIFY(differsAfter([](TaskItem &t) { t.id = QUuid(); }));
        QVERIFY(differsAfter([](TaskItem &t) { t.title = QStringLiteral("b"); }));
        QVERIFY(differsAfter([](TaskItem &t) { t.isDone = false; }));
        QVERIFY(differsAfter([](TaskItem &t) { t.createdAt.secondsSince2001 += 0.25; }));
        QVERIFY(differsAfter([](TaskItem &t) { t.completedAt->secondsSince2001 += 0.25; }));
        QVERIFY(differsAfter([](TaskItem &t) { t.completedAt.reset(); }));
        QVERIFY(differsAfter([](TaskItem &t) { t.parentID.reset(); }));
        QVERIFY(differsAfter([](TaskItem &t) { t.isDeferred = false; }));
        QVERIFY(differsAfter([](TaskItem &t) { t.quadrant = TaskQuadrant::importantNotUrgent; }));
    }

    void theFourRequiredKeysDecodeToATaskWithTheDefaults()
    {
        const std::optional<TaskItem> task = decodeTask(minimalTask());
        QVERIFY(task);
        QCOMPARE(uuidText(task->id), idText);
        QCOMPARE(task->title, QStringLiteral("a"));
        QVERIFY(!task->isDone);
        QCOMPARE(task->createdAt.secondsSince2001, 5.5);
        QVERIFY(!task->isExpanded);
        QVERIFY(!task->isDeferred);
        QCOMPARE(task->quadrant, TaskQuadrant::notUrgentNotImportant);
        QVERIFY(!task->parentID);
        QVERIFY(!task->completedAt);
    }

    void aTaskWithoutParentAndCompletionTimeIsEncodedWithExactlySevenKeys()
    {
        const QJsonObject json =
            QJsonDocument::fromJson(encodeTask(TaskItem::make(QStringLiteral("a"), {1}))).object();
        const QStringList expected = {QStringLiteral("createdAt"),  QStringLiteral("id"),
                                      QStringLiteral("isDeferred"), QStringLiteral("isDone"),
                                      QStringLiteral("isExpanded"), QStringLiteral("quadrant"),
                                      QStringLiteral("title")};
        QCOMPARE(json.keys(), expected);
    }

    void theQuadrantUrgentMakesTheRecordAndItsDocumentFailToDecode()
    {
        QJsonObject task = minimalTask();
        task.insert(QStringLiteral("quadrant"), QStringLiteral("urgent"));
        QVERIFY(!decodeTask(task));
        const auto documentWith = [](const QJsonObject &record) {
            return QJsonDocument(QJsonObject{{QStringLiteral("tasks"), QJsonArray{record}},
                                             {QStringLiteral("isHardPinned"), true}})
                .toJson();
        };
        QVERIFY(!decodeSavedState(documentWith(task)));
        task.insert(QStringLiteral("quadrant"), QStringLiteral("urgentImportant"));
        QVERIFY(decodeSavedState(documentWith(task)));
    }

    void theKeysAreWrittenInTheirOrder()
    {
        const QByteArray expected =
            R"({"id":"DEADBEEF-12AB-4CD3-8E0F-0123456789AB","title":"牛乳を買う","isDone":true,)"
            R"("createdAt":795484800.25,"completedAt":795484900.5,)"
            R"("parentID":"00000000-0000-4000-8000-000000000001","isExpanded":true,"isDeferred":true,)"
            R"("quadrant":"urgentImportant"})";
        QCOMPARE(encodeTask(fullTask()), expected);
    }

    void anEncodedTaskDecodesToItself()
    {
        const TaskItem task = fullTask();
        const std::optional<TaskItem> decoded =
            decodeTask(QJsonDocument::fromJson(encodeTask(task)).object());
        QVERIFY(decoded);
        QCOMPARE(*decoded, task);
    }

    void aMissingOrNullRequiredKeyIsAnError_data()
    {
        QTest::addColumn<QString>("key");
        for (const auto *key : {"id", "title", "isDone", "createdAt"})
            QTest::newRow(key) << QString::fromLatin1(key);
    }

    void aMissingOrNullRequiredKeyIsAnError()
    {
        QFETCH(QString, key);
        QJsonObject task = minimalTask();
        task.remove(key);
        QVERIFY(!decodeTask(task));
        task.insert(key, QJsonValue::Null);
        QVERIFY(!decodeTask(task));
    }

    void aNullForAnOptionalOrDefaultedKeyCountsAsAbsent()
    {
        QJsonObject task = minimalTask();
        for (const auto *key : {"completedAt", "parentID", "isExpanded", "isDeferred", "quadrant"})
            task.insert(QLatin1String(key), QJsonValue::Null);
        QCOMPARE(decodeTask(task), decodeTask(minimalTask()));
        QVERIFY(decodeTask(task));
    }

    void unknownKeysAreIgnored()
    {
        QJsonObject task = minimalTask();
        task.insert(QStringLiteral("colour"), QJsonArray{1, 2});
        QCOMPARE(decodeTask(task), decodeTask(minimalTask()));
    }

    void identifiersAreReadInAnyLetterCase()
    {
        QJsonObject task = minimalTask();
        task.insert(QStringLiteral("id"), idText.toLower());
        QCOMPARE(decodeTask(task), decodeTask(minimalTask()));
    }

    void whatIsNoObjectIsNoTask()
    {
        for (const QJsonValue &value :
             {QJsonValue(), QJsonValue(1), QJsonValue(true), QJsonValue(idText), QJsonValue(QJsonArray()),
              QJsonValue(QJsonObject()), QJsonValue(QJsonValue::Undefined)})
            QVERIFY(!decodeTask(value));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TaskItemTest)
#include "task_item_test.moc"
