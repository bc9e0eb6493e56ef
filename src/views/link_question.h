// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <functional>

class QUrl;

namespace wrenfold {

/// Shows a whole link that came from outside, in its encoded form, in which nothing hides, and asks whether to open it.
/// Deletes itself when it closes. Escape and closing it are a no.
class LinkQuestion : public QDialog
{
    Q_OBJECT

public:
    /// Without `open` the link is one that is not opened, and the dialog says so.
    LinkQuestion(const QUrl &link, std::function<void()> open, QWidget *parent);
};

/// Calls `open` for a link that came from outside: at once, after a question, or never, as linkOpening() says.
void openForeignLink(const QUrl &link, const std::function<void()> &open, QWidget *parent);

} // namespace wrenfold
