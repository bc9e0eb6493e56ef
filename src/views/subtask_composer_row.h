// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_row_widget.h"

#include <functional>

namespace wrenfold {

class TextField;

/// The field under a task in which a subtask is typed. Return adds, Escape closes; a draft is kept while the
/// row is scrolled out of sight.
class SubtaskComposerRow : public PanelRowWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void(const TaskItem &parent, const QString &title)> addSubtask;
        std::function<void(const TaskItem &parent)> close;
    };

    SubtaskComposerRow(const Actions &actions, QWidget *parent);

protected:
    void rowChanged(const PanelRow &previous) override;
    void focusInEvent(QFocusEvent *event) override;
    bool actOnKey(int key) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void submit();

    Actions m_actions;
    TextField *m_field;
};

} // namespace wrenfold
