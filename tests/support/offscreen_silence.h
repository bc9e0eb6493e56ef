// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

namespace wrenfold {

/// While one lives, what the offscreen platform says about windows that it cannot raise, cut out or give the
/// keyboard to is dropped. Every other message goes its way.
class OffscreenSilence
{
public:
    OffscreenSilence()
    {
        if (s_depth++ == 0)
            s_next = qInstallMessageHandler(pass);
    }
    ~OffscreenSilence()
    {
        if (--s_depth == 0)
            qInstallMessageHandler(s_next);
    }
    Q_DISABLE_COPY_MOVE(OffscreenSilence)

private:
    static void pass(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (!message.startsWith(QLatin1String("This plugin does not support ")))
            s_next(type, context, message);
    }

    inline static int s_depth = 0;
    inline static QtMessageHandler s_next = nullptr;
};

} // namespace wrenfold
