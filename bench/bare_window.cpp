// SPDX-License-Identifier: MIT
#include "support/sample_state.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

// What any program of this toolkit takes that shows a window of the panel's size: with nothing in it, or, with
// --rows, with the titles of 40 tasks. It stands where the panel stands.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(344, 500);
    if (QApplication::arguments().contains(QStringLiteral("--rows"))) {
        auto *layout = new QVBoxLayout(&window);
        layout->setSizeConstraint(QLayout::SetNoConstraint);
        for (const wrenfold::TaskItem &task : wrenfold::sampleState(40).tasks) {
            auto *label = new QLabel(task.title);
            label->setFixedHeight(11);
            layout->addWidget(label);
        }
        layout->setSpacing(0);
        layout->setContentsMargins(0, 0, 0, 0);
    }
    QRect frame = window.frameGeometry();
    frame.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    window.move(frame.topLeft());
    window.show();
    return QApplication::exec();
}
