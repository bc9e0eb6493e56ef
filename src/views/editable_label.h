// SPDX-License-Identifier: MIT
#pragma once

#include "look/text_label.h"

namespace wrenfold {

class TextField;

/// A text that turns into a field when it is to be edited. Return and leaving the field commit, Escape does
/// not.
class EditableLabel : public QWidget
{
    Q_OBJECT

public:
    /// `fieldName` says what is edited, for whoever cannot see it.
    explicit EditableLabel(const QString &fieldName, QWidget *parent = nullptr);

    /// What is shown while nobody edits.
    [[nodiscard]] TextLabel *label() const { return m_label; }

    /// A field that is open goes on with what was typed.
    void setText(const QString &text);

    void beginEditing();
    void commitEditing(); ///< Closes the field as leaving it does.
    void cancelEditing(); ///< Closes the field and forgets what was typed; nothing is emitted.
    [[nodiscard]] bool isEditing() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    void clicked(); ///< The text was clicked while nobody edited.
    /// The user committed a text that differs from the one shown by more than blanks around it. The label
    /// shows the old one until setText().
    void edited(const QString &text);
    void closedByKey(); ///< Return or Escape closed the field; the focus is the receiver's to give.

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void endEditing(bool isCommitted);
    void closeByKey(bool isCommitted);

    QString m_fieldName;
    TextLabel *m_label;
    TextField *m_field = nullptr; ///< Made when first needed.
};

} // namespace wrenfold
