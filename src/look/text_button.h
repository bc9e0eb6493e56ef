// SPDX-License-Identifier: MIT
#pragma once

#include "look/painted_button.h"

namespace wrenfold {

/// A button with a short text, shown exactly as it is: an ampersand makes no mnemonic. Use label(), not
/// text().
class TextButton : public PaintedButton
{
    Q_OBJECT

public:
    enum class Kind {
        Link,    ///< Accent text without a surface.
        Plain,   ///< On a soft surface.
        Primary, ///< On the accent: what Return would choose.
    };

    explicit TextButton(const QString &label, Kind kind = Kind::Link, QWidget *parent = nullptr);

    /// The text; also the accessible name. A help, if set, is the tool tip and the description.
    void setLabel(const QString &label);
    [[nodiscard]] QString label() const { return m_label; }

    /// In front of the text; one of the names that Symbols knows. None at first.
    void setSymbol(const QString &symbol);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void helpChanged() override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int symbolWidth() const;

    QString m_label;
    QString m_symbol;
    Kind m_kind;
};

} // namespace wrenfold
