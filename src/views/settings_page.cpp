// SPDX-License-Identifier: MIT
#include "views/settings_page.h"

#include "look/note_label.h"
#include "look/theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace wrenfold {

SettingsPage::SettingsPage(QWidget *parent)
    : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus); // Its controls have it; they scroll into sight.
    auto *page = new QWidget;
    m_content = new QVBoxLayout(page);
    m_content->setContentsMargins(Metrics::settingsPadding, Metrics::settingsPadding,
                                  Metrics::settingsPadding, Metrics::settingsPadding);
    m_content->setSpacing(Metrics::settingsSectionSpacing);
    m_content->setAlignment(Qt::AlignTop);
    setWidget(page);
    // Qt scrolls to what Tab reaches from within the page only, not from the row of tabs. While a mouse button is held,
    // nothing may move under the pointer. A window that becomes active shows what it showed.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *old, QWidget *now) {
        if (old && now && isAncestorOf(now) && QGuiApplication::mouseButtons() == Qt::NoButton)
            ensureWidgetVisible(now);
    });
    // The surface is that of the tabs.
    viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
}

QSize SettingsPage::minimumSizeHint() const
{
    const QSize least = QScrollArea::minimumSizeHint();
    return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(), least.height()};
}

QVBoxLayout *SettingsPage::addSection(const QString &title)
{
    auto *section = new QVBoxLayout;
    section->setSpacing(Metrics::settingsSpacing);
    m_content->addLayout(section);
    if (!title.isEmpty()) {
        auto *heading = new QLabel(title);
        QFont font;
        font.setWeight(QFont::DemiBold);
        heading->setFont(font);
        section->addWidget(heading);
    }
    return section;
}

QCheckBox *SettingsPage::addSwitch(QBoxLayout *section, const QString &title)
{
    auto *box = new QCheckBox(title);
    section->addWidget(box, 0, Qt::AlignLeft);
    return box;
}

QCheckBox *SettingsPage::addSwitch(QBoxLayout *section, const QString &title, Setting<bool> &setting)
{
    QCheckBox *box = addSwitch(section, title);
    connect(box, &QCheckBox::toggled, box, [&setting](bool isOn) { setting.set(isOn); });
    keep(setting.watch([box](bool isOn) { box->setChecked(isOn); }));
    return box;
}

NoteLabel *SettingsPage::addNote(QBoxLayout *section, const QString &text)
{
    auto *note = new NoteLabel(text);
    section->addWidget(note);
    return note;
}

QPushButton *SettingsPage::addButton(QBoxLayout *section, const QString &title)
{
    auto *button = new QPushButton(title);
    button->setAutoDefault(true); // Return presses it, too.
    section->addWidget(button, 0, Qt::AlignLeft);
    return button;
}

} // namespace wrenfold
