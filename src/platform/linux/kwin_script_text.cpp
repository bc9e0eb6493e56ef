// SPDX-License-Identifier: MIT
#include "platform/linux/kwin_script_text.h"

#include <QFile>

namespace wrenfold {
namespace {

QByteArray resource(const QString &name)
{
    QFile file(QStringLiteral(":/kwin/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray programLine(const QString &busName)
{
    return "const program = " + javaScriptString(busName) + ";\n";
}

bool isHarmless(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'0' && unit <= u'9') || unit == u' ' || unit == u'.' || unit == u'-';
}

} // namespace

QByteArray javaScriptString(const QString &text)
{
    QByteArray literal = "\"";
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        if (isHarmless(unit))
            literal += static_cast<char>(unit);
        else
            literal += "\\u" + QByteArray::number(unit, 16).rightJustified(4, '0');
    }
    return literal + '"';
}

QByteArray reportActiveWindowScript(const QString &busName)
{
    return programLine(busName) + resource(QStringLiteral("report_active_window.js"));
}

QByteArray minimizeWindowsScript(const QString &busName, const QList<WindowIdentity> &windows)
{
    QByteArrayList names;
    for (const WindowIdentity &window : windows) {
        names << '[' + javaScriptString(window.windowClass) + ", " + javaScriptString(window.windowInstance) +
                     ", " + javaScriptString(window.desktopFile) + ']';
    }
    return programLine(busName) + "const names = [" + names.join(", ") + "];\n" +
           resource(QStringLiteral("minimize_windows.js"));
}

} // namespace wrenfold
