// SPDX-License-Identifier: MIT
#include "app/wrenfold_main.h"

#include "app/application_id.h"
#include "app/debug_commands.h"
#include "app/debug_log.h"
#include "app/launch_options.h"
#include "app/marketing_demo.h"
#include "app/print.h"
#include "look/japanese_font.h"
#include "platform/none/no_global_shortcuts.h"
#include "platform/platform.h"
#include "platform/termination_signals.h"
#include "shell/app_delegate.h"
#include "shell/desktop_report.h"
#include "shell/hot_keys.h"
#include "shell/tray_icon.h"

#include <QApplication>
#include <QTimer>

#include <future>

namespace wrenfold {

namespace {

QStringList argumentList(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

/// The exit status of a run that is to print this and nothing else.
int printed(const QString &text)
{
    return print(stdout, text.toUtf8()) ? 0 : 1;
}

/// The exit status of a start with a mistyped option; none of another. Asked once the application object has taken the
/// toolkit's options out of its arguments.
std::optional<int> refuseUnknownOption()
{
    const std::optional<QString> unknown = unknownOption(QCoreApplication::arguments().mid(1));
    if (!unknown)
        return std::nullopt;
    print(stderr, "wrenfold: unknown option " + unknown->toLocal8Bit() + '\n');
    return 2;
}

/// The exit status of a start that found the program running already and had it do what was asked for; none of the
/// start that is to run.
std::optional<int> handOver(SingleInstance &instance, Request request)
{
    if (instance.claim() != SingleInstance::Claim::Taken)
        return std::nullopt;
    if (const std::optional<QString> answer = instance.ask(request))
        return printed(*answer);
    if (instance.claim() != SingleInstance::Claim::Taken)
        return std::nullopt; // It has ended meanwhile.
    print(stderr, "wrenfold: it runs already, but does not answer\n");
    return 1;
}

StatusIcon invisibleIcon()
{
    return {QStringLiteral("report"), [](int side) {
                QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
                image.fill(Qt::transparent);
                return image;
            }};
}

/// Keys that other programs hold are known by trying them. Only for this moment: a start meanwhile needs them.
QString reportWithHotKeys(Platform &platform)
{
    std::vector<std::unique_ptr<GlobalHotKey>> hotKeys;
    if (!platform.globalShortcuts->asksUser())
        hotKeys = registerHotKeys(*platform.globalShortcuts,
                                  {.togglePanel = [] {}, .hidePanel = [] {}, .newTodo = [] {}});
    return desktopReport(platform);
}

/// The report of a desktop on which the program does not run.
int printDesktopReport(Platform &platform)
{
    platform.singleInstance.reset(); // So that the program can be started meanwhile.
    platform.frontmostApplication->start();
    platform.notificationCenter->requestAuthorization([](bool, const NotificationCenter::Error &) {});
    platform.statusItem->setContent({.icon = invisibleIcon(), .label = {}, .toolTip = {}});
    platform.statusItem->show({.activate = [] {},
                               .openMenu = [] {},
                               .menuRows = [] { return QList<StatusMenuRow>(); },
                               .chooseRow = [](int) {},
                               .labelShown = [](bool) {}});
    // Nobody tells when the desktop has said all that it will.
    constexpr std::chrono::milliseconds answersTime(1500);
    QTimer::singleShot(answersTime, [] { QApplication::exit(); });
    QApplication::exec();
    return printed(reportWithHotKeys(platform));
}

AppDelegate::StoreMaking storeMaking(const LaunchOptions &options)
{
    if (!options.isDemonstration)
        return {};
    return {.options = {.loadSavedState = false, .monitorInbox = false},
            .seed = [isBoardVisible = !options.isBoardClosed](FocusStore &store) {
                seedMarketingDemo(store, isBoardVisible);
            }};
}

/// Without a display a start can still reach the running program.
int runWithoutWindows(int argc, char **argv, const LaunchOptions &options)
{
    const QCoreApplication application(argc, argv);
    if (const std::optional<int> status = refuseUnknownOption())
        return *status;
    if (!options.isDemonstration) {
        if (const std::optional<int> status = handOver(*makeSingleInstance(), options.request))
            return *status;
        if (options.request == Request::HidePanel)
            return 0; // There is none.
    }
    print(stderr, "wrenfold: there is no display for its windows\n");
    return 1;
}

int runApplication(int argc, char **argv, const QStringList &arguments, const LaunchOptions &options)
{
    // While the toolkit loads its plug-ins and asks the display.
    const std::future<void> fontsRead = std::async(std::launch::async, readFontConfiguration);
    QApplication application(argc, argv);
    fontsRead.wait();
    if (const std::optional<int> status = refuseUnknownOption())
        return *status;
    QApplication::setApplicationName(QStringLiteral("wrenfold"));
    QApplication::setDesktopFileName(applicationID());
    QApplication::setQuitOnLastWindowClosed(false);

    Platform platform = makePlatform([] { return std::make_unique<TrayIcon>(); });
    if (options.isDemonstration) {
        // The keys are for the program beside it, even for one that starts later.
        platform.globalShortcuts = std::make_unique<NoGlobalShortcuts>();
    } else if (const std::optional<int> status = handOver(*platform.singleInstance, options.request)) {
        return *status;
    }
    if (options.request == Request::DesktopReport)
        return printDesktopReport(platform);
    if (options.request == Request::HidePanel)
        return 0; // There is none.

    Preferences &preferences = *platform.preferences;
    DebugLog::setVerbosePreference([&preferences] {
        return preferences.read(QStringLiteral("Wrenfold.DebugVerbose")).bytes.trimmed() == "true";
    });
    const TerminationSignals signals([] { QApplication::exit(); });

    AppDelegate delegate(platform, storeMaking(options));
    qCInfo(DebugLog::app).noquote() << QStringLiteral("Wrenfold starting args=") +
                                           arguments.mid(1).join(QLatin1Char(' '));
    const std::optional<Request> request =
        options.isBusService ? std::nullopt : std::optional(options.request);
    QMetaObject::invokeMethod(
        &application, [&] { delegate.applicationDidFinishLaunching(request); }, Qt::QueuedConnection);
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

    const LaunchOptions options =
        LaunchOptions::parse(arguments.mid(1), QProcessEnvironment::systemEnvironment());
    if (const std::optional<int> status = runDebugCommandIfNeeded(options))
        return *status;
    if (options.mode == LaunchOptions::Mode::Help)
        return printed(LaunchOptions::help());
    if (options.mode == LaunchOptions::Mode::Version)
        return printed(QStringLiteral("wrenfold " WRENFOLD_VERSION "\n"));
    prepareForApplication();
    const int status = hasWindowSystem(arguments) ? runApplication(argc, argv, arguments, options)
                                                  : runWithoutWindows(argc, argv, options);
    endProcessIfHeldUp(status);
    return status;
}

} // namespace wrenfold
