// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

#include <functional>

namespace wrenfold {

class TextField;

/// The field under a task in which a subtask is typed. Return adds and closes, Escape closes; leaving the field, or
/// opening it for another task, adds what is typed. A draft is kept while the row is scrolled out of sight.
class SubtaskComposerRow : public PanelRowWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void(const TaskItem &parent, const QString &title)> addSubtask;
        /// By Return or Escape: the focus is the receiver's to give.
        std::function<void(const TaskItem &parent)> close;
    };

    SubtaskComposerRow(const Actions &actions, QWidget *parent);

    void commitDraft(); ///< Adds what is typed, as leaving the field does.

protected:
    void rowChanged(const PanelRow &previous) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool actOnKey(int key) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void submit();
    void addDraft(const TaskItem &parent);

    Actions m_actions;
    TextField *m_field;
};

} // namespace wrenfold
