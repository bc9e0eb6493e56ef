// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace wrenfold {

/// An explanation or a state among the desktop's own controls: plain text in as many lines as it needs, smaller and
/// calmer than they are.
class NoteLabel : public QLabel
{
    Q_OBJECT

public:
    explicit NoteLabel(const QString &text, QWidget *parent = nullptr);

    /// A text from elsewhere; line breaks are shown as spaces. An empty one takes no room.
    void setState(const QString &text);

protected:
    bool event(QEvent *event) override;

private:
    void applyTheme();
};

} // namespace wrenfold
