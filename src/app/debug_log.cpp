// SPDX-License-Identifier: MIT
#include "app/debug_log.h"

#include "app/application_id.h"

#include <QStringList>

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace wrenfold {

namespace {

constexpr auto subsystem = applicationIDLiteral;

bool isVerboseArgumentGiven = false;

std::function<bool()> &verbosePreference()
{
    static std::function<bool()> isSet;
    return isSet;
}

struct Level
{
    const char *name;
    int priority; ///< As syslog numbers them.
};

Level levelOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return {"debug", 7};
    case QtInfoMsg:
        return {"info", 6};
    case QtWarningMsg:
        return {"error", 3};
    case QtCriticalMsg:
    case QtFatalMsg:
        break;
    }
    return {"fault", 2};
}

bool isBidiControl(QChar c)
{
    const char16_t u = c.unicode();
    return u == 0x061C || u == 0x200E || u == 0x200F || (u >= 0x202A && u <= 0x202E) ||
           (u >= 0x2066 && u <= 0x2069);
}

bool breaksLines(QChar c)
{
    return c == QChar::LineSeparator || c == QChar::ParagraphSeparator ||
           c.category() == QChar::Other_Control;
}

QString escaped(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (breaksLines(c) || isBidiControl(c))
            result += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            result += c;
    }
    return result;
}

/// The journal names the stream it reads from in JOURNAL_STREAM as device:inode; other streams that inherited
/// the variable do not match.
bool isStandardErrorTheJournal()
{
    struct stat status = {};
    if (::fstat(STDERR_FILENO, &status) != 0)
        return false;
    const QByteArray ours =
        QByteArray::number(qulonglong(status.st_dev)) + ':' + QByteArray::number(qulonglong(status.st_ino));
    return qgetenv("JOURNAL_STREAM") == ours;
}

void writeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    static const bool priorities = isStandardErrorTheJournal();
    const QByteArray bytes = DebugLog::line(type, context.category, message, priorities).toUtf8() + '\n';
    // One call a line, so that lines of several processes do not mix.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, bytes.constData(), size_t(bytes.size()));
}

} // namespace

#define WRENFOLD_LOG_CHANNEL(name)                                                                           \
    const QLoggingCategory &DebugLog::name()                                                                 \
    {                                                                                                        \
        static const QLoggingCategory category(#name);                                                       \
        return category;                                                                                     \
    }

WRENFOLD_LOG_CHANNEL(app)
WRENFOLD_LOG_CHANNEL(timer)
WRENFOLD_LOG_CHANNEL(guard)
WRENFOLD_LOG_CHANNEL(store)
WRENFOLD_LOG_CHANNEL(ui)
WRENFOLD_LOG_CHANNEL(login)

#undef WRENFOLD_LOG_CHANNEL

bool DebugLog::isVerbose()
{
    return isVerboseArgumentGiven || qgetenv("WRENFOLD_DEBUG") == "1" ||
           (verbosePreference() && verbosePreference()());
}

void DebugLog::setArguments(const QStringList &arguments)
{
    isVerboseArgumentGiven = arguments.contains(QStringLiteral("--verbose"));
}

void DebugLog::setVerbosePreference(std::function<bool()> isSet)
{
    verbosePreference() = std::move(isSet);
}

void DebugLog::install()
{
    qInstallMessageHandler(writeMessage);
}

QString DebugLog::line(QtMsgType type, const char *category, const QString &message, bool priorities)
{
    const Level level = levelOf(type);
    const QString prefix = priorities ? QStringLiteral("<%1>").arg(level.priority) : QString();
    return QStringLiteral("%1%2 [%3] %4: %5")
        .arg(prefix, QLatin1String(subsystem), QLatin1String(category ? category : "default"),
             QLatin1String(level.name), escaped(message));
}

} // namespace wrenfold
