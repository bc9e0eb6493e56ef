// SPDX-License-Identifier: MIT
#pragma once

#include "look/text_field.h"
#include "model/saved_state.h"
#include "model/store_on_fakes.h"
#include "shell/app_delegate.h"
#include "shell/focus_panel.h"
#include "support/fake_platform.h"
#include "views/menu_probes.h"
#include "views/todo_composer.h"
#include "views/view_probes.h"

#include <QWindow>

namespace wrenfold {

/// A program on fakes. The panel is found as the desktop finds it, among the windows.
struct Program
{
    OffscreenSilence silence;
    FakePlatform fakes;
    std::unique_ptr<AppDelegate> delegate;

    Program() { fakes.preferences->setValue(FocusStore::storageKey(), StoreOnFakes::documentWith({})); }

    void start(std::optional<Request> request = Request::ShowPanel)
    {
        delegate = std::make_unique<AppDelegate>(fakes.platform);
        delegate->applicationDidFinishLaunching(request);
    }

    [[nodiscard]] static FocusPanel *panel()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (auto *panel = qobject_cast<FocusPanel *>(window))
                return panel;
        }
        return nullptr;
    }
    [[nodiscard]] static TextField *composer()
    {
        return panel()->findChild<TodoComposer *>()->findChild<TextField *>();
    }
    /// The menu that a press of the right button opens where the header's button stands.
    [[nodiscard]] static QMenu *openMenuOn(const QString &button)
    {
        const PaintedButton *place = buttonNamed(*panel(), button);
        QTest::mouseClick(panel()->windowHandle(), Qt::RightButton, {},
                          place->mapTo(panel(), place->rect().center()));
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }
    static void add(const QString &title)
    {
        type(composer(), title);
        QTest::keyClick(composer(), Qt::Key_Return);
    }

    [[nodiscard]] QString savedTitles() const
    {
        const QByteArray document = fakes.preferences->read(FocusStore::storageKey()).bytes;
        return words(decodeSavedState(document).value_or(SavedState()).tasks);
    }
};

} // namespace wrenfold
