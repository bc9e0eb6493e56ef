// SPDX-License-Identifier: MIT
#pragma once

#include "look/text_field.h"
#include "platform/installed_applications.h"
#include "support/offscreen_silence.h"
#include "views/application_chooser.h"
#include "views/view_probes.h"

#include <QFileInfo>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QWindow>

#include <algorithm>

namespace wrenfold {

/// A chooser in sight, worked by key and pointer.
struct OpenChooser
{
    OffscreenSilence silence;
    QWidget window;
    InstalledApplications installed;
    ApplicationChooser chooser{installed, &window};
    QSignalSpy chosen{&chooser, &ApplicationChooser::chosen};
    QListView *view = chooser.findChild<QListView *>();
    TextField *search = chooser.findChild<TextField *>();

    /// Waits until the chooser has been filled; whether it has.
    [[nodiscard]] bool open()
    {
        window.show();
        chooser.open();
        return QTest::qWaitForWindowActive(&chooser) &&
               QTest::qWaitFor([this] { return installed.isLoaded() && !names().isEmpty(); });
    }

    [[nodiscard]] QString names() const
    {
        QStringList names;
        for (int row = 0; row < view->model()->rowCount(); ++row)
            names.append(view->model()->index(row, 0).data().toString());
        return names.join(u' ');
    }

    [[nodiscard]] QString selected() const
    {
        QStringList names;
        for (int row = 0; row < view->model()->rowCount(); ++row) {
            const QModelIndex index = view->model()->index(row, 0);
            if (view->selectionModel()->isSelected(index))
                names.append(index.data().toString());
        }
        return names.join(u' ');
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(chooser.windowHandle(), key, modifiers);
    }

    void typeText(const QString &text)
    {
        for (const QChar letter : text)
            QTest::keyClick(chooser.windowHandle(), letter.toLatin1());
    }

    [[nodiscard]] QPoint middleOf(int row) const
    {
        return view->visualRect(view->model()->index(row, 0)).center();
    }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, middleOf(row));
    }

    [[nodiscard]] QPushButton *button(const QString &text) const
    {
        for (QPushButton *button : shown<QPushButton>(chooser)) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }

    void clickButton(const QString &text) { QTest::mouseClick(button(text), Qt::LeftButton); }

    [[nodiscard]] bool says(const QString &text) const
    {
        const auto labels = shown<QLabel>(chooser);
        return std::any_of(labels.begin(), labels.end(),
                           [&](const QLabel *label) { return label->text() == text; });
    }

    /// The file names of what was chosen once, without their ending.
    [[nodiscard]] QString chosenFiles() const
    {
        QStringList names;
        if (chosen.size() != 1)
            return QStringLiteral("chosen %1 times").arg(chosen.size());
        for (const QUrl &url : chosen.constFirst().constFirst().value<QList<QUrl>>())
            names.append(QFileInfo(url.toLocalFile()).completeBaseName());
        return names.join(u' ');
    }
};

} // namespace wrenfold
