// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>
#include <QStringList>

namespace wrenfold {

/// While it lives, collects what is logged, as "level category: text", instead of printing it. One at a time.
class LogCapture
{
public:
    LogCapture()
    {
        lines().clear();
        m_previous = qInstallMessageHandler(collect);
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY_MOVE(LogCapture)

    /// The lines since the last call.
    [[nodiscard]] static QStringList take() { return std::exchange(lines(), {}); }

private:
    static QStringList &lines()
    {
        static QStringList collected;
        return collected;
    }

    static void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        const char *level = type == QtDebugMsg     ? "debug"
                            : type == QtInfoMsg    ? "info"
                            : type == QtWarningMsg ? "warning"
                                                   : "critical";
        lines()
            << QStringLiteral("%1 %2: %3").arg(QLatin1String(level), QLatin1String(context.category), text);
    }

    QtMessageHandler m_previous;
};

} // namespace wrenfold
