// SPDX-License-Identifier: MIT
#include "model/saved_state.h"
#include "model/task_list.h"

#include <QHash>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// The document on disk may have been edited by hand, cut off or made by another program. Whatever of it can
// be read must be written back the same, and must give a list as the store may hold it.

namespace {

using namespace wrenfold;

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "fuzz_saved_state: %s\n", what);
    std::abort();
}

bool areSameBits(Timestamp a, Timestamp b)
{
    return std::bit_cast<quint64>(a.secondsSince2001) == std::bit_cast<quint64>(b.secondsSince2001);
}

void requireSameDates(const TaskList &before, const TaskList &after)
{
    for (qsizetype i = 0; i < before.size(); ++i) {
        require(areSameBits(before[i].createdAt, after[i].createdAt), "createdAt lost a bit");
        require(areSameBits(before[i].completedAt.value_or(Timestamp()),
                            after[i].completedAt.value_or(Timestamp())),
                "completedAt lost a bit");
    }
}

/// What repairing may touch is the identifier of a repeated task and the parent of a task; all else stays.
void requireNothingLost(const TaskList &before, const TaskList &after)
{
    require(before.size() == after.size(), "repairing changed the number of tasks");
    for (qsizetype i = 0; i < before.size(); ++i) {
        TaskItem expected = before[i];
        expected.id = after[i].id;
        expected.parentID = after[i].parentID;
        require(expected == after[i], "repairing changed more of a task than its place in the tree");
        require(!after[i].parentID || after[i].parentID == before[i].parentID,
                "repairing gave a task another parent");
    }
}

void requireInvariants(const TaskList &tasks)
{
    QHash<QUuid, bool> isTopLevel;
    for (const TaskItem &task : tasks) {
        require(!isTopLevel.contains(task.id), "an identifier is there twice");
        isTopLevel.insert(task.id, task.isTopLevel());
    }
    for (const TaskItem &task : tasks)
        require(!task.parentID || isTopLevel.value(*task.parentID, false),
                "a parent is missing or a subtask");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray document(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<SavedState> state = decodeSavedState(document);
    if (!state)
        return 0;

    const QByteArray encoded = encodeSavedState(*state);
    const std::optional<SavedState> again = decodeSavedState(encoded);
    require(again.has_value(), "what was written cannot be read");
    require(*again == *state, "what was written is read as something else");
    requireSameDates(state->tasks, again->tasks);
    require(encodeSavedState(*again) == encoded, "writing the same twice gives different bytes");

    const TaskList tasks = repaired(state->tasks);
    requireNothingLost(state->tasks, tasks);
    requireInvariants(tasks);
    require(repaired(tasks) == tasks, "a repaired list is repaired again");
    return 0;
}
