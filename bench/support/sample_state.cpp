// SPDX-License-Identifier: MIT
#include "support/sample_state.h"

#include <random>

namespace wrenfold {

namespace {

QString sampleTitle(int number)
{
    static const QStringList beginnings = {
        QStringLiteral("企画書の第%1章を見直して田中さんに送る"),
        QStringLiteral("週次レビュー(%1回目)の議事録をまとめて共有する"),
        QStringLiteral("請求書 No.%1 の金額を経理に確認する"),
        QStringLiteral("API v%1 のエラー処理を直してテストを足す"),
        QStringLiteral("歯医者の予約を%1日に変更する電話をかける"),
    };
    return beginnings[number % beginnings.size()].arg(number);
}

} // namespace

SavedState sampleState(int count)
{
    std::mt19937_64 random(1);
    SavedState state;
    for (int i = 0; i < count; ++i) {
        TaskItem task;
        quint64 halves[2] = {random(), random()};
        task.id = QUuid::fromRfc4122({reinterpret_cast<const char *>(halves), sizeof halves});
        task.title = sampleTitle(i);
        task.createdAt = {794106000.125 + double(random() % 31536000000) / 1000.0};
        task.quadrant = allQuadrants[std::size_t(random() % allQuadrants.size())];
        switch (i % 10) {
        case 3:
            task.parentID = state.tasks.last().id;
            state.tasks.last().isExpanded = true;
            break;
        case 5:
        case 8:
            task.isDone = true;
            task.completedAt = Timestamp{task.createdAt.secondsSince2001 + 3600.5};
            break;
        case 7:
            task.isDeferred = true;
            break;
        default:
            break;
        }
        state.tasks.append(task);
    }
    state.activeTaskID = state.tasks.first().id;
    state.mediumGoal = QStringLiteral("今週の軸を決める");
    return state;
}

} // namespace wrenfold
