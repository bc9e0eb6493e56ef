// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

namespace wrenfold {

class PublishedBase;

/// What a set of published properties shares: when their changes are saved and announced.
///
/// An operation opens a Scope, assigns, and lets the scope end. Scopes nest; only the end of the outermost
/// one counts. Then, in this order:
/// 1. properties that have their old value back are forgotten,
/// 2. if a persisted one differs, or a save was asked for, `save` is called, once,
/// 3. each property that differs announces itself, once, in the order of the first assignments.
/// So a subscriber never sees half an operation, and what it is told of has been saved. An assignment outside
/// any scope is an operation by itself.
class ChangeGroup
{
public:
    explicit ChangeGroup(std::function<void()> save);
    ChangeGroup(const ChangeGroup &) = delete;
    ChangeGroup &operator=(const ChangeGroup &) = delete;

    class Scope
    {
    public:
        explicit Scope(ChangeGroup &group);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        ChangeGroup &m_group;
    };

    /// Inside a scope: saves at its end in any case.
    void requestSave();

private:
    friend class PublishedBase;

    void commit();

    std::function<void()> m_save;
    std::vector<PublishedBase *> m_assigned; ///< In the order of their first assignment.
    int m_depth = 0;
    bool m_isSaveRequested = false;
};

/// Whether a property's changes reach the saved document.
enum class Persistence { Transient, Persisted };

/// The part of a published property that its group deals with.
class PublishedBase
{
public:
    virtual ~PublishedBase() = default;
    PublishedBase(const PublishedBase &) = delete;
    PublishedBase &operator=(const PublishedBase &) = delete;

protected:
    PublishedBase(ChangeGroup &group, Persistence persistence)
        : m_group(group)
        , m_persistence(persistence)
    {
    }

    ChangeGroup &group() const { return m_group; }
    void noteAssignment() { m_group.m_assigned.push_back(this); }

private:
    friend class ChangeGroup;

    /// Ends the operation for this property; whether it differs from before.
    virtual bool settle() = 0;
    virtual void announce() = 0;

    ChangeGroup &m_group;
    Persistence m_persistence;
};

} // namespace wrenfold
