// SPDX-License-Identifier: MIT
#pragma once

#include "platform/frontmost_application.h"

#include <QHash>
#include <QList>

namespace wrenfold {

/// What an installed application says of itself in its .desktop file.
struct DesktopEntry
{
    QString id;              ///< The file's name in the applications folder, without ".desktop".
    QString name;            ///< In the user's language. Never empty.
    QString startupWMClass;  ///< What its windows call themselves; empty if it does not say.
    QString program;         ///< The file name of what it runs; empty if it does not say.
    bool isDisplayed = true; ///< False for what menus leave out.
    QString icon; ///< A name in the icon theme or an absolute path, unchecked; empty if it does not say.
    QString path; ///< Where the file lies.

    /// Reads the group "Desktop Entry" of such a file; id and path stay empty. `locale` is like "ja_JP". Nothing for
    /// what is not the entry of an application, or has no name.
    [[nodiscard]] static std::optional<DesktopEntry> parse(const QByteArray &bytes, const QString &locale);

    friend bool operator==(const DesktopEntry &, const DesktopEntry &) = default;
};

/// What a window tells of the program that it belongs to. Empty where it tells nothing.
struct WindowIdentity
{
    QString gtkApplicationID;
    QString desktopFile;    ///< The id, or the path, of its desktop entry.
    QString windowClass;    ///< The class of WM_CLASS, or a Wayland window's app_id.
    QString windowInstance; ///< The instance of WM_CLASS.
    QString program;        ///< The file name of the executable.

    friend bool operator==(const WindowIdentity &, const WindowIdentity &) = default;
};

/// The applications that are installed, and whose window is whose. Comparisons ignore case. A value; copies are cheap.
class DesktopEntries
{
public:
    DesktopEntries() = default;
    /// Of two that claim the same, one that menus display wins over one that they do not, then the first.
    explicit DesktopEntries(QList<DesktopEntry> entries);

    [[nodiscard]] const QList<DesktopEntry> &entries() const { return m_entries; }

    /// The entry that the window belongs to, by what it says most plainly: its entry's id, what the entry says of its
    /// windows, their names, the program. Null if there is none.
    [[nodiscard]] const DesktopEntry *find(const WindowIdentity &window) const;

    /// The same, named as the user knows it: without an entry, by what the window says.
    [[nodiscard]] RunningApplication application(const WindowIdentity &window) const;

private:
    QList<DesktopEntry> m_entries;
    QHash<QString, qsizetype> m_byID; ///< The keys of all four are folded.
    QHash<QString, qsizetype> m_byWindowClass;
    QHash<QString, qsizetype> m_byLastPart;
    QHash<QString, qsizetype> m_byProgram;
};

/// The keys and values of the group "Desktop Entry" of a .desktop file, their escapes taken back. Empty for what is not
/// text. The first of two equal keys counts.
[[nodiscard]] QHash<QString, QString> desktopEntryValues(const QByteArray &bytes);

/// The words of an entry's Exec value. Quotes hold a word together; codes such as %f stay as they are.
[[nodiscard]] QStringList commandWords(const QString &command);

/// The entry in a .desktop file, with its path and the id that it has by its place below an applications folder, else by
/// its file's name. Nothing if the file is none or cannot be read.
[[nodiscard]] std::optional<DesktopEntry> readDesktopEntry(const QString &path);

/// The user's language for texts, as "ja_JP", from the environment.
[[nodiscard]] QString messagesLocale();

} // namespace wrenfold
