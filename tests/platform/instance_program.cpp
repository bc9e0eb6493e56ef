// SPDX-License-Identifier: MIT
// A program as small as can be that runs once for each preferences folder. Its first argument is the folder,
// its second the patience in milliseconds; it takes its commands from standard input, a line each, and
// answers with a line.
#include "platform/linux/linux_single_instance.h"
#include "platform/platform.h"
#include "platform/termination_signals.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>

#include <iostream>
#include <string>
#include <unistd.h>

using namespace wrenfold;

namespace {

void say(const QByteArray &line)
{
    std::cout << line.constData() << std::endl;
}

const char *nameOf(SingleInstance::Claim claim)
{
    switch (claim) {
    case SingleInstance::Claim::First:
        return "first";
    case SingleInstance::Claim::Taken:
        return "taken";
    case SingleInstance::Claim::Unguarded:
        return "unguarded";
    }
    return "";
}

void obey(const std::string &command, SingleInstance &instance)
{
    const auto answer = [](Request request) {
        say(wordFor(request).toUtf8() + ' ' + qgetenv("XDG_ACTIVATION_TOKEN"));
        return request == Request::DesktopReport ? QStringLiteral("works\n") : QString();
    };
    if (command == "claim") {
        say(nameOf(instance.claim()));
    } else if (const auto request = requestNamed(QString::fromStdString(command))) {
        const std::optional<QString> text = instance.ask(*request);
        say(text ? "answered " + text->toUtf8().trimmed() : "not answered");
    } else if (command == "listen") {
        instance.listen(answer);
        say("listening");
    } else if (command == "listen soon") {
        QTimer::singleShot(300, [&instance, answer] { instance.listen(answer); });
        say("soon");
    } else if (command == "start a child") {
        qint64 child = 0;
        QProcess::startDetached(QStringLiteral("sleep"), {QStringLiteral("60")}, {}, &child);
        say(QByteArray::number(child));
    } else {
        say("awake");
    }
}

int run(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const TerminationSignals terminationSignals([] {
        say("terminating");
        QCoreApplication::quit();
    });
    const QStringList arguments = QCoreApplication::arguments();
    LinuxSingleInstance instance(arguments.at(1), std::chrono::milliseconds(arguments.at(2).toInt()));

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&instance] {
        std::string command; // One at a time: a test waits for the answer before it sends the next.
        if (std::getline(std::cin, command))
            obey(command, instance);
        else
            QCoreApplication::exit(2);
    });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const int status = run(argc, argv);
    endProcessIfHeldUp(status);
    return status;
}
