// SPDX-License-Identifier: MIT
#include "views/setting_field.h"

#include "look/plain_text.h"

#include <QFocusEvent>
#include <QSignalBlocker>
#include <QValidator>

#include <algorithm>

namespace wrenfold {

namespace {

/// A validator hears of text however it comes: pasted, dropped, or from an input method.
class WithoutLineBreaks : public QValidator
{
public:
    using QValidator::QValidator;

    State validate(QString &input, int &cursor) const override
    {
        const auto before = std::count_if(input.cbegin(), input.cbegin() + cursor, breaksLine);
        input.removeIf(breaksLine);
        cursor -= static_cast<int>(before);
        return Acceptable;
    }
};

} // namespace

SettingField::SettingField(Setting<QString> &setting, QWidget *parent)
    : LineEdit(parent)
{
    setValidator(new WithoutLineBreaks(this));
    connect(this, &QLineEdit::textChanged, this, [&setting](const QString &text) { setting.set(text); });
    connect(this, &QLineEdit::returnPressed, this, &SettingField::commit);
    m_subscription = setting.watch([this](const QString &text) { follow(text); });
}

void SettingField::focusOutEvent(QFocusEvent *event)
{
    LineEdit::focusOutEvent(event);
    // The field's own menu is no leaving.
    if (event->reason() != Qt::PopupFocusReason && hasUncommittedText())
        commit();
}

void SettingField::follow(const QString &text)
{
    if (text == this->text())
        return;
    const QSignalBlocker blocker(this); // What is shown of a setting does not change it.
    setCommittedText(text);
}

} // namespace wrenfold
