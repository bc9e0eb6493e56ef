// SPDX-License-Identifier: MIT
// Runs once in KWin, 5 or 6, and minimises an application's windows on the current desktop. The program puts in front
// where to report (const program = "<name on the bus>") and what the windows call themselves
// (const names = [["<class>", "<instance>", "<desktop file>"], ...]).

// KWin's versions differ in what a window that says nothing has here, and in texts and bytes.
const text = (value) => (value === undefined || value === null ? "" : String(value));

function isTheApplications(window) {
    return names.some((name) => name[0] === text(window.resourceClass) && name[1] === text(window.resourceName) &&
                                name[2] === text(window.desktopFileName));
}

function isOnCurrentDesktop(window) {
    const current = workspace.currentDesktop;
    if (window.onAllDesktops)
        return true;
    if (typeof current === "number") // In KWin 5 desktops have numbers.
        return Array.from(window.x11DesktopIds).includes(current);
    return Array.from(window.desktops).some((desktop) => desktop.id === current.id);
}

Array.from(workspace.windowList ? workspace.windowList() : workspace.clientList())
    .filter((window) => (window.normalWindow || window.dialog) && window.minimizable)
    .filter((window) => isTheApplications(window) && isOnCurrentDesktop(window))
    .forEach((window) => { window.minimized = true; });
callDBus(program, "/dev/tolvane/Wrenfold/ActiveWindow", "dev.tolvane.Wrenfold.ActiveWindow", "WindowsMinimized");
