// SPDX-License-Identifier: MIT
#include "ai/ai_error.h"
#include "ai/chat_completions.h"
#include "ai/one_password_items.h"
#include "ai/subtask_insertion.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Answers come from a model by way of a service, and from a tool; whatever they are, reading them ends in a value or in
// one AIError, and what is read can be put into a list.

namespace {

using namespace wrenfold;

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "fuzz_ai_answer: %s\n", what);
    std::abort();
}

/// Nothing but an AIError may come out of reading, and its description is one line.
template<typename Read>
void readSafely(Read read)
{
    try {
        read();
    } catch (const AIError &error) {
        require(!error.description().isEmpty(), "an error without a description");
        require(!error.description().contains(QLatin1Char('\n')), "an error of several lines");
    }
}

void readContent(const QString &content)
{
    readSafely([&] {
        const QByteArray object = extractedObject(content);
        require(!object.contains('{') || !object.contains('}') ||
                    (object.startsWith('{') && object.endsWith('}')),
                "what was extracted is no object");
    });
    readSafely([&] { (void)orderedIDs(content); });
    readSafely([&] {
        const QStringList titles = splitTitles(content);
        const TaskItem task = TaskItem::make(QStringLiteral("task"), Timestamp{});
        const TaskList split = withSplit({task}, titles, task.id, Timestamp{});
        require(split.size() <= 7, "more than six subtasks");
        for (const TaskItem &item : split)
            require(!item.title.trimmed().isEmpty(), "a subtask without a title");
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    readSafely([&] { readContent(completionContent(bytes)); });
    readContent(QString::fromUtf8(bytes));
    for (const QString &identifier : OnePasswordItems::candidates(bytes))
        require(!identifier.isNull(), "a candidate that is none");
    const QString key = OnePasswordItems::keyIn(bytes);
    require(key == key.trimmed(), "a key that is not trimmed");
    return 0;
}
