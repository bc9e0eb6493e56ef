// SPDX-License-Identifier: MIT
// Runs in KWin, 5 or 6, and tells Wrenfold which window is active. Its first line, which the program puts in front,
// says where to: const program = "<name on the bus>".

const activeWindow = () => (workspace.activeWindow !== undefined ? workspace.activeWindow : workspace.activeClient);

// KWin's versions differ in what a window that says nothing has here, and in texts and bytes.
const text = (value) => (value === undefined || value === null ? "" : String(value));

function report() {
    const window = activeWindow();
    const isAnybodys = window && !window.desktopWindow && !window.dock && !window.minimized;
    const values = isAnybodys ? [window.resourceClass, window.resourceName, window.desktopFileName, window.pid]
                              : ["", "", "", ""];
    callDBus(program, "/dev/tolvane/Wrenfold/ActiveWindow", "dev.tolvane.Wrenfold.ActiveWindow", "Changed",
             text(values[0]), text(values[1]), text(values[2]), text(values[3]));
}

// Some programs name their window only after they have shown it.
function follow(window) {
    const reportIfActive = () => {
        if (window === activeWindow())
            report();
    };
    window.windowClassChanged.connect(reportIfActive);
    window.desktopFileNameChanged.connect(reportIfActive);
    window.minimizedChanged.connect(reportIfActive);
}

Array.from(workspace.windowList ? workspace.windowList() : workspace.clientList()).forEach(follow);
(workspace.windowAdded || workspace.clientAdded).connect(follow);
(workspace.windowActivated || workspace.clientActivated).connect(report);
report();
