// SPDX-License-Identifier: MIT
#pragma once

#include "views/deferred_task_row.h"

class QUrl;

namespace wrenfold {

class FocusStore;

/// Makes the widgets of the list's rows, with each of their actions joined to the store's operation for it.
class PanelRowFactory
{
public:
    struct Actions
    {
        /// Has the rows follow the store at once: the next key may be waiting already, and is meant for the row that
        /// comes then.
        std::function<void()> updateRows;
        std::function<void(const TaskItem &)> beginAddSubtask;
        std::function<void(const TaskItem &)> focusTask;
        std::function<void(const QUrl &)> openLink; ///< With the user's program for it.
    };

    /// The store must outlive the factory, and the factory the widgets.
    PanelRowFactory(FocusStore &store, const Actions &actions);

    [[nodiscard]] PanelRowWidget *make(PanelRow::Kind kind, QWidget *parent) const;
    [[nodiscard]] DeferredTaskRow::Actions deferredTaskActions() const;

private:
    template<typename Operation>
    auto thenUpdate(Operation operation) const;
    PanelRowWidget *makeTaskRow(QWidget *parent) const;
    PanelRowWidget *makeInboxRow(QWidget *parent) const;
    PanelRowWidget *makeSubtaskComposer(QWidget *parent) const;
    PanelRowWidget *makeSectionHeader(QWidget *parent) const;
    void moveBy(const TaskItem &task, int step) const;

    FocusStore &m_store;
    Actions m_actions;
};

} // namespace wrenfold
