// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <optional>

namespace wrenfold {

/// How all our windows look: which theme holds, and the application's palette, by which Qt draws menus, tool tips and
/// questions. The desktop's own palette stays in place where it fits, its font always. Needs the application object.
class ApplicationLook : public QObject
{
    Q_OBJECT

public:
    struct Wishes
    {
        std::optional<bool> isDark; ///< None: as the desktop's own palette is.
        bool isHighContrast = false;
        bool isMotionReduced = false;
    };

    ApplicationLook();

    /// From now on this holds; windows in sight are painted anew.
    void follow(const Wishes &wishes);

protected:
    /// Another theme of the desktop's brings another palette and another font.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void choosePalette();

    Wishes m_wishes;
};

} // namespace wrenfold
