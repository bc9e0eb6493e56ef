// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_item.h"

#include <QWidget>

namespace wrenfold {

class TextLabel;

/// The task under the pointer while it is dragged. Lets the pointer through.
class DraggingTaskPreview : public QWidget
{
    Q_OBJECT

public:
    explicit DraggingTaskPreview(const TaskItem &task, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    TextLabel *m_title;
};

} // namespace wrenfold
