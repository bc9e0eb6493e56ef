// SPDX-License-Identifier: MIT
#include "support/sample_state.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QTime>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QLabel *label(const QString &text)
{
    auto *result = new QLabel(text);
    result->setFixedHeight(12);
    return result;
}

} // namespace

// What any program of this toolkit takes that shows a window of the panel's size, at the panel's place: with
// nothing in it, with one line of Latin text (--line), with the titles of 40 tasks (--rows), or, at another place,
// with the time painted anew each second (--clock).
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Bare window"));
    window.resize(344, 500);
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (QApplication::arguments().contains(QStringLiteral("--line")))
        layout->addWidget(label(QStringLiteral("One line of text")));
    if (QApplication::arguments().contains(QStringLiteral("--rows"))) {
        for (const wrenfold::TaskItem &task : wrenfold::sampleState(40).tasks)
            layout->addWidget(label(task.title));
    }
    QRect frame = window.frameGeometry();
    frame.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    window.move(frame.topLeft());
    QTimer second;
    if (QApplication::arguments().contains(QStringLiteral("--clock"))) {
        auto *clock = label({});
        layout->addWidget(clock);
        second.setTimerType(Qt::PreciseTimer);
        QObject::connect(&second, &QTimer::timeout, clock,
                         [clock] { clock->setText(QTime::currentTime().toString()); });
        second.start(1000);
        window.move(0, 0);
    }
    window.show();
    return QApplication::exec();
}
