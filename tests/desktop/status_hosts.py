"""Real hosts of status items in a session. Each is one panel with nothing but its status area, at the top of the screen."""

import re

WATCHER = "org.kde.StatusNotifierWatcher"

XFCE_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="{plugin}"/>
  </property>
</channel>
"""

LXQT_PANEL = """[General]
__userfile__=true

[panel1]
plugins=statusnotifier
position=Top
panelSize=28
iconSize=22
width=100
width-percent=true
alignment=-1

[statusnotifier]
type=statusnotifier
alignment=Left
"""


class XfcePanel:
    """xfce4-panel with its own status area, or with the plug-in for Ayatana's indicators and their service."""

    height = 28

    def __init__(self, session, plugin="systray"):
        self._session = session
        self._processes = []
        self._is_ayatana = plugin == "indicator"
        folder = session.folder / "xdg_config_home/xfce4/xfconf/xfce-perchannel-xml"
        folder.mkdir(parents=True)
        (folder / "xfce4-panel.xml").write_text(XFCE_PANEL.format(plugin=plugin))

    def start(self):
        if self._is_ayatana:
            self._processes.append(self._session.start(AYATANA_SERVICE))
            wait_watcher(self._session)
        self._processes.append(self._session.start("xfce4-panel", "--disable-wm-check"))
        wait_watcher(self._session)
        wait_shown(self._session, self.height)

    def kill(self):
        kill(self._session, self._processes)


AYATANA_SERVICE = "/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service"


class LxqtPanel:
    height = 28

    def __init__(self, session):
        self._session = session
        self._processes = []
        folder = session.folder / "xdg_config_home/lxqt"
        folder.mkdir()
        (folder / "panel.conf").write_text(LXQT_PANEL)

    def start(self):
        self.begin()
        wait_shown(self._session, self.height)

    def begin(self):
        """As start(), but the host comes up on the screen later."""
        self._processes.append(self._session.start("lxqt-panel"))
        wait_watcher(self._session)

    def kill(self):
        kill(self._session, self._processes)


HOSTS = {"xfce4-panel": XfcePanel, "ayatana": lambda session: XfcePanel(session, "indicator"), "lxqt-panel": LxqtPanel}
# Of the pointer. Indicators open the menu at a click, and their panel has one of its own for the other button.
MENU_BUTTON = {"xfce4-panel": 3, "ayatana": 1, "lxqt-panel": 3}


def has_watcher(session):
    answer = session.tool("busctl", "--user", "call", "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                          "NameHasOwner", "s", WATCHER)
    return answer == "b true"


def wait_watcher(session):
    session.wait_for(lambda: has_watcher(session), "a host of status items")


def wait_shown(session, height):
    """Waits until the host has its place on the screen; windows that come up earlier are placed without regard to it."""
    def is_shown():
        area = re.findall(r"\d+", session.tool("xprop", "-root", "_NET_WORKAREA"))
        return len(area) >= 4 and int(area[1]) >= height
    session.wait_for(is_shown, "the host on the screen")


def kill(session, processes):
    """Ends the programs as a crash does."""
    for process in processes:
        process.kill()
        process.wait()
    processes.clear()
    session.wait_for(lambda: not has_watcher(session), "the host of status items to go")


def expect_registered(session, program):
    """Waits until the host has the program's item."""
    name = f"org.kde.StatusNotifierItem-{program.pid}-1"
    session.wait_for(lambda: name in registered(session), f"{name} to be registered")


def registered(session):
    return session.tool("busctl", "--user", "get-property", WATCHER, "/StatusNotifierWatcher", WATCHER,
                        "RegisteredStatusNotifierItems")
