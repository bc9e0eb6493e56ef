// SPDX-License-Identifier: MIT
#pragma once

#include "model/change_group.h"

#include <algorithm>
#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace wrenfold {

class FocusStore;

/// Handle of a subscription; the subscription ends when it is destroyed, which may be before or after the
/// property goes, and inside the subscriber's own call. Keep handles as a class's last member.
class Subscription
{
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> slot)
        : m_slot(std::move(slot))
    {
    }

private:
    std::shared_ptr<void> m_slot;
};

/// A value that says when it changes.
///
/// - value() is the value last assigned, inside an operation too.
/// - An assignment of an equal value is none. An operation that ends with the value it began with announces
///   nothing.
/// - Announcements come once an operation is whole and saved (see ChangeGroup). Subscribers are called in the order in
///   which they subscribed, with the value as it is then.
/// - A subscriber may read everything and assign to anything; such an assignment is an operation of its own, saved and
///   announced at once, within the announcement under way. A subscriber that subscribes others has them called from
///   the next announcement on.
/// - Assigning is the store's alone; a Setting is open to everybody.
template<std::equality_comparable T>
class Published : public PublishedBase
{
public:
    Published(ChangeGroup &group, T initial, Persistence persistence = Persistence::Transient)
        : PublishedBase(group, persistence)
        , m_value(std::move(initial))
    {
    }

    [[nodiscard]] const T &value() const { return m_value; }

    /// Calls `subscriber` on each change.
    [[nodiscard]] Subscription onChange(std::function<void(const T &)> subscriber)
    {
        auto slot = std::make_shared<Slot>(std::move(subscriber));
        m_slots.push_back(slot);
        return Subscription(std::move(slot));
    }

    /// Calls `subscriber` now and then on each change.
    [[nodiscard]] Subscription watch(std::function<void(const T &)> subscriber)
    {
        subscriber(m_value);
        return onChange(std::move(subscriber));
    }

protected:
    friend class FocusStore;

    void set(T value)
    {
        if (value == m_value)
            return;
        const ChangeGroup::Scope scope(group());
        if (!m_before) {
            m_before = std::move(m_value);
            noteAssignment();
        }
        m_value = std::move(value);
    }

private:
    using Slot = std::function<void(const T &)>;

    bool settle() override
    {
        const bool differs = *m_before != m_value;
        m_before.reset();
        return differs;
    }

    void announce() override
    {
        std::erase_if(m_slots, [](const std::weak_ptr<Slot> &slot) { return slot.expired(); });
        const std::vector<std::weak_ptr<Slot>> slots = m_slots;
        for (const auto &candidate : slots) {
            if (const std::shared_ptr<Slot> slot = candidate.lock())
                (*slot)(m_value);
        }
    }

    T m_value;
    std::optional<T> m_before; ///< Present while an operation that assigned has not ended.
    std::vector<std::weak_ptr<Slot>> m_slots;
};

/// A published value that anybody may assign: what the user sets in a window.
template<std::equality_comparable T>
class Setting : public Published<T>
{
public:
    using Published<T>::Published;
    using Published<T>::set;
};

} // namespace wrenfold
