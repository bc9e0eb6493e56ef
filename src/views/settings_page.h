// SPDX-License-Identifier: MIT
#pragma once

#include "model/published.h"

#include <QScrollArea>

#include <vector>

class QBoxLayout;
class QCheckBox;
class QPushButton;
class QVBoxLayout;

namespace wrenfold {

class NoteLabel;

/// One tab of the settings: controls below one another, scrolled where the window is too low for them. What the user
/// sets goes to the store at once, and the controls follow the store.
class SettingsPage : public QScrollArea
{
    Q_OBJECT

public:
    /// As wide as the content, so that there is nothing to scroll sideways.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    explicit SettingsPage(QWidget *parent);

    /// A group of controls at the end of the page, under a heading if it has a title.
    QVBoxLayout *addSection(const QString &title = {});

    /// A box for a setting that anybody may assign.
    static QCheckBox *addSwitch(QBoxLayout *section, const QString &title);
    QCheckBox *addSwitch(QBoxLayout *section, const QString &title, Setting<bool> &setting);
    static NoteLabel *addNote(QBoxLayout *section, const QString &text);
    static QPushButton *addButton(QBoxLayout *section, const QString &title);

    /// Keeps a subscription as long as the page lives.
    void keep(Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); }

private:
    QVBoxLayout *m_content;
    std::vector<Subscription> m_subscriptions;
};

} // namespace wrenfold
