// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

#include <optional>

namespace wrenfold {

/// Ends the blinking of a field's caret once it has been left alone for a while. A caret at rest stays visible and wakes
/// nobody; it blinks again with the next key.
class CaretRest : public QObject
{
    Q_OBJECT

public:
    /// For this field, which owns it.
    explicit CaretRest(QWidget *field);
    ~CaretRest() override;

    /// How long after the last key the caret goes on blinking; ten seconds at first.
    void setDelay(std::chrono::milliseconds delay);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void rest();
    void wake();

    QTimer m_timer;
    std::optional<int> m_flashTime; ///< The application's, while the caret rests.
};

} // namespace wrenfold
