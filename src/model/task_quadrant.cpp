// SPDX-License-Identifier: MIT
#include "model/task_quadrant.h"

namespace wrenfold {

namespace {

struct Texts
{
    QLatin1String rawValue;
    const char16_t *label;
};

const Texts &textsOf(TaskQuadrant quadrant)
{
    static constexpr std::array<Texts, allQuadrants.size()> texts = {{
        {QLatin1String("urgentImportant"), u"緊急 × 重要"},
        {QLatin1String("importantNotUrgent"), u"重要 × 緊急ではない"},
        {QLatin1String("urgentNotImportant"), u"緊急 × 重要ではない"},
        {QLatin1String("notUrgentNotImportant"), u"緊急でも重要でもない"},
    }};
    return texts[std::size_t(quadrant)];
}

} // namespace

QLatin1String rawValue(TaskQuadrant quadrant)
{
    return textsOf(quadrant).rawValue;
}

std::optional<TaskQuadrant> quadrantFromRawValue(const QString &text)
{
    for (const TaskQuadrant quadrant : allQuadrants) {
        if (text == rawValue(quadrant))
            return quadrant;
    }
    return std::nullopt;
}

QString label(TaskQuadrant quadrant)
{
    return QString::fromUtf16(textsOf(quadrant).label);
}

} // namespace wrenfold
