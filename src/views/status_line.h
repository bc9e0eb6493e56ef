// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <functional>

namespace wrenfold {

class TextButton;
class TextLabel;

/// The line at the bottom of the panel: a passing message, and behind a deletion the way back.
class StatusLine : public QWidget
{
    Q_OBJECT

public:
    explicit StatusLine(std::function<void()> undo, QWidget *parent = nullptr);

    void setStatus(const QString &text, bool isUndoOffered);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeChildren();

    TextLabel *m_text;
    TextButton *m_undo;
};

} // namespace wrenfold
