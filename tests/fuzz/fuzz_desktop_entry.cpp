// SPDX-License-Identifier: MIT
#include "platform/desktop_entries.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Any program may install a .desktop file, and a window may call itself anything. What is read of a file has a name, and
// a window is given the entry that it names, or none.

namespace {

using namespace wrenfold;

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "fuzz_desktop_entry: %s\n", what);
    std::abort();
}

/// Nothing said is the same as nothing.
bool isSame(const QString &a, const QString &b)
{
    return !a.isEmpty() && a.toCaseFolded() == b.toCaseFolded();
}

/// The bytes of a file that says this name.
QByteArray fileNamed(QString name)
{
    name.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'\n', QLatin1String("\\n"))
        .replace(u'\t', QLatin1String("\\t"))
        .replace(u'\r', QLatin1String("\\r"));
    return "[Desktop Entry]\nType=Application\nName=" + name.toUtf8();
}

void requireEntry(const DesktopEntry &entry)
{
    require(entry.id.isEmpty() && entry.path.isEmpty(), "an id or a path that the file cannot know");
    require(!entry.name.isEmpty(), "an entry without a name");
    require(entry.name == entry.name.trimmed(), "a name that is not trimmed");
    require(entry.icon == entry.icon.trimmed(), "an icon that is not trimmed");
    require(!entry.program.contains(u'/') && !entry.program.contains(u'='), "a program that is no file name");
    const std::optional<DesktopEntry> again = DesktopEntry::parse(fileNamed(entry.name), {});
    require(again && again->name == entry.name, "a name that is read as another");
}

/// Whether the window says anything that the entry is known by.
bool isNamedBy(const DesktopEntry &entry, const WindowIdentity &window)
{
    const QString lastPart = entry.id.section(u'.', -1);
    for (const QString &name : {window.windowClass, window.windowInstance}) {
        if (isSame(name, entry.id) || isSame(name, entry.startupWMClass) || isSame(name, lastPart))
            return true;
    }
    const QString file = window.desktopFile.section(u'/', -1);
    return isSame(window.gtkApplicationID, entry.id) || isSame(file, entry.id) ||
           isSame(file, entry.id + QLatin1String(".desktop")) || isSame(window.program, entry.program);
}

void requireApplication(const DesktopEntries &entries, const WindowIdentity &window)
{
    const DesktopEntry *entry = entries.find(window);
    const RunningApplication application = entries.application(window);
    if (entry) {
        require(isNamedBy(*entry, window), "a window has the entry of another");
        require(application.bundleIdentifier == entry->id, "an application with another id than its entry");
        require(application.localizedName == entry->name, "an application with another name than its entry");
    } else {
        require(!application.bundleIdentifier, "an id without an entry");
        require(application.localizedName != QString(), "an empty name");
        require(application.localizedName ||
                    window == WindowIdentity{window.gtkApplicationID, {}, {}, {}, {}},
                "a window that says what it is has no name");
    }
}

/// Each entry is found by what it says of itself; of two that say the same, one of them is.
void requireFound(const DesktopEntries &entries, const DesktopEntry &entry)
{
    const auto find = [&](const WindowIdentity &window) {
        requireApplication(entries, window);
        return entries.find(window);
    };
    const DesktopEntry *found = find({entry.id, {}, {}, {}, {}});
    require(found && isSame(found->id, entry.id), "an entry is not found by its id");
    found = find({{}, QStringLiteral("/applications/") + entry.id + QLatin1String(".desktop"), {}, {}, {}});
    require(found && isSame(found->id, entry.id), "an entry is not found by its file");
    found = find({{}, {}, entry.startupWMClass, {}, {}});
    require(entry.startupWMClass.isEmpty() || (found && isSame(found->startupWMClass, entry.startupWMClass)),
            "an entry is not found by what its windows call themselves");
}

/// The window whose answers are the lines of the text, from one of the five on.
WindowIdentity windowOf(const QString &text, int first)
{
    WindowIdentity window;
    QString *const fields[] = {&window.gtkApplicationID, &window.desktopFile, &window.windowClass,
                               &window.windowInstance, &window.program};
    const QList<QStringView> lines = QStringView(text).split(u'\n');
    for (qsizetype i = 0; i < std::min<qsizetype>(lines.size(), 5); ++i)
        *fields[(i + first) % 5] = lines[i].toString();
    return window;
}

DesktopEntries installed(const DesktopEntry &read)
{
    const auto entry = [](const char *id, const char *windowClass, const char *program, bool isDisplayed) {
        DesktopEntry made;
        made.id = QLatin1String(id);
        made.name = QStringLiteral("Name");
        made.startupWMClass = QLatin1String(windowClass);
        made.program = QLatin1String(program);
        made.isDisplayed = isDisplayed;
        return made;
    };
    DesktopEntry shown = read;
    shown.id = QStringLiteral("org.example.Read");
    DesktopEntry other = read;
    other.id = QString(read.name).replace(u'/', u'-');
    other.isDisplayed = !read.isDisplayed;
    return DesktopEntries({entry("org.example.Editor", "Editor", "editor", true),
                           entry("editor", "", "editor", false), entry("runner", "", "python3", true), shown,
                           other});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString text = QString::fromUtf8(bytes);
    DesktopEntry read;
    read.name = QStringLiteral("Read");
    for (const QString &locale :
         {QString(), QStringLiteral("ja_JP"), QStringLiteral("sr_RS@latin"), text.left(8)}) {
        const std::optional<DesktopEntry> entry = DesktopEntry::parse(bytes, locale);
        if (!entry)
            continue;
        requireEntry(*entry);
        read = *entry;
    }
    const DesktopEntries entries = installed(read);
    for (const DesktopEntry &entry : entries.entries())
        requireFound(entries, entry);
    for (int first = 0; first < 5; ++first)
        requireApplication(entries, windowOf(text, first));
    return 0;
}
