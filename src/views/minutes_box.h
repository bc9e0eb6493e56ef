// SPDX-License-Identifier: MIT
#pragma once

#include <QSpinBox>

namespace wrenfold {

class LineEdit;

/// A number of minutes with a name in front: "作業: 25 分". The wheel turns it only while it has the focus, so that a
/// page which scrolls under the pointer changes nothing.
class MinutesBox : public QSpinBox
{
    Q_OBJECT

public:
    MinutesBox(const QString &name, int maximum, QWidget *parent = nullptr);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    LineEdit *m_field;
};

} // namespace wrenfold
