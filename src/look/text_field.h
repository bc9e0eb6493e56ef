// SPDX-License-Identifier: MIT
#pragma once

#include "look/line_edit.h"

namespace wrenfold {

/// A line to type in on a surface that we paint: without a frame of its own, in the theme's colours.
class TextField : public LineEdit
{
    Q_OBJECT

public:
    /// `name` says what is to be typed: placeholder and accessible name.
    explicit TextField(const QString &name, QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;

private:
    void applyTheme();
};

} // namespace wrenfold
