// SPDX-License-Identifier: MIT
#include "app/wrenfold_main.h"

#include "app/application_id.h"
#include "app/debug_commands.h"
#include "app/debug_log.h"
#include "app/launch_options.h"
#include "platform/platform.h"
#include "platform/termination_signals.h"
#include "shell/app_delegate.h"

#include <QApplication>

#include <cstdio>

namespace wrenfold {

namespace {

QStringList argumentList(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

int print(const QString &text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    return 0;
}

/// The start found the program running already: there is nothing to do but to show it.
int showRunning(SingleInstance &instance)
{
    if (instance.showRunning())
        return 0;
    std::fputs("wrenfold: it runs already, but does not answer\n", stderr);
    return 1;
}

int runApplication(int argc, char **argv, const QStringList &arguments)
{
    prepareForApplication();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("wrenfold"));
    QApplication::setDesktopFileName(applicationID());
    QApplication::setQuitOnLastWindowClosed(false);

    Platform platform = makePlatform();
    if (platform.singleInstance->claim() == SingleInstance::Claim::Taken)
        return showRunning(*platform.singleInstance);

    Preferences &preferences = *platform.preferences;
    DebugLog::setVerbosePreference([&preferences] {
        return preferences.read(QStringLiteral("Wrenfold.DebugVerbose")).bytes.trimmed() == "true";
    });
    const TerminationSignals signals([] { QApplication::exit(); });

    AppDelegate delegate(platform);
    qCInfo(DebugLog::app).noquote() << QStringLiteral("Wrenfold starting args=") +
                                           arguments.mid(1).join(QLatin1Char(' '));
    QMetaObject::invokeMethod(
        &application, [&delegate] { delegate.applicationDidFinishLaunching(); }, Qt::QueuedConnection);
    const int status = QApplication::exec();
    DebugLog::setVerbosePreference({});
    return status;
}

} // namespace

int WrenfoldMain::main(int argc, char **argv)
{
    const QStringList arguments = argumentList(argc, argv);
    DebugLog::install();
    DebugLog::setArguments(arguments);

    const LaunchOptions options = LaunchOptions::parse(arguments.mid(1));
    if (const std::optional<int> status = runDebugCommandIfNeeded(options))
        return *status;
    if (options.mode == LaunchOptions::Mode::Help)
        return print(LaunchOptions::help());
    if (options.mode == LaunchOptions::Mode::Version)
        return print(QStringLiteral("wrenfold " WRENFOLD_VERSION "\n"));
    const int status = runApplication(argc, argv, arguments);
    endProcessIfHeldUp(status);
    return status;
}

} // namespace wrenfold
