// SPDX-License-Identifier: MIT
#include "model/change_group.h"

#include <QtGlobal>

#include <algorithm>
#include <utility>

namespace wrenfold {

ChangeGroup::ChangeGroup(std::function<void()> save)
    : m_save(std::move(save))
{
}

ChangeGroup::Scope::Scope(ChangeGroup &group)
    : m_group(group)
{
    ++m_group.m_depth;
}

ChangeGroup::Scope::~Scope()
{
    if (--m_group.m_depth == 0)
        m_group.commit();
}

void ChangeGroup::requestSave()
{
    Q_ASSERT(m_depth > 0);
    m_isSaveRequested = true;
}

void ChangeGroup::commit()
{
    std::vector<PublishedBase *> changed = std::exchange(m_assigned, {});
    std::erase_if(changed, [](PublishedBase *property) { return !property->settle(); });

    const bool isPersistedChanged =
        std::any_of(changed.begin(), changed.end(), [](const PublishedBase *property) {
            return property->m_persistence == Persistence::Persisted;
        });
    if (std::exchange(m_isSaveRequested, false) || isPersistedChanged)
        m_save();
    for (PublishedBase *property : changed)
        property->announce();
}

} // namespace wrenfold
