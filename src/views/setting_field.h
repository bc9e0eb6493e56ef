// SPDX-License-Identifier: MIT
#pragma once

#include "look/line_edit.h"
#include "model/published.h"

namespace wrenfold {

/// A line in which a setting is typed. The setting follows each letter; the typing counts as committed, and is no longer
/// undone here, once Return is pressed or the field is left. Line breaks that come with a pasted text are dropped.
class SettingField : public LineEdit
{
    Q_OBJECT

public:
    /// The setting must outlive the field.
    explicit SettingField(Setting<QString> &setting, QWidget *parent = nullptr);

protected:
    void focusOutEvent(QFocusEvent *event) override;

private:
    void follow(const QString &text);

    Subscription m_subscription;
};

} // namespace wrenfold
