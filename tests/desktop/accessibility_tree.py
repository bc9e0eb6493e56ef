"""What a screen reader gets from a program of a session. One session a process: the library stays with its first bus."""

import os

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402 (the version comes first)

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
PROGRAM_ENVIRONMENT = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}


def role_of(accessible):
    """The name of its role, as newer versions of the library say it."""
    name = accessible.get_role_name()
    return "button" if name == "push button" else name


class Element:
    """One element of the tree."""

    def __init__(self, accessible, parent):
        self._accessible = accessible
        self.parent = parent
        self.role = role_of(accessible)
        self.name = accessible.get_name()
        self.states = {state.value_nick for state in accessible.get_state_set().get_states()}

    @property
    def actions(self):
        if "Action" not in self._accessible.get_interfaces():
            return []
        return [self._accessible.get_action_name(i) for i in range(self._accessible.get_n_actions())]

    def __repr__(self):
        return f"{self.role} {self.name!r}"

    def act(self, action):
        self._accessible.do_action(self.actions.index(action))


class AccessibilityTree:
    """The tree of a program that is to be started with PROGRAM_ENVIRONMENT, after this was made."""

    def __init__(self, session):
        self._session = session
        session.start(LAUNCHER, "--launch-immediately")
        session.wait_for(lambda: "=" in session.tool("xprop", "-root", "AT_SPI_BUS"), "the accessibility bus")
        os.environ |= {name: session.environment[name] for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS")}
        Atspi.init()
        self._program = None
        self._focused = []
        self._listener = Atspi.EventListener.new(self._note_focus)
        self._listener.register("object:state-changed:focused")

    def wait_program(self, name):
        """Waits until the only program in the tree has this name."""
        def look():
            self._take_events()
            desktop = Atspi.get_desktop(0)
            programs = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
            return [each for each in programs if each and each.get_name() == name] if len(programs) == 1 else None
        self._program = self._session.wait_for(look, f"the program {name} alone in the tree")[0]
        # Looks see what is there now, whatever has been announced.
        self._program.set_cache_mask(Atspi.Cache.NONE)

    def in_sight(self):
        """The elements that are shown, from the window down."""
        self._take_events()
        return list(self._walk(self._program))[1:]

    def find(self, role, name, within=None):
        """The elements in sight with this role and name; only those right within elements of another name, if asked."""
        return [element for element in self.in_sight() if (element.role, element.name) == (role, name)
                and within in (None, element.parent.name)]

    def act(self, role, name, action, within=None):
        """Does what a screen reader does when its user presses the one element."""
        found = self._session.wait_for(lambda: self.find(role, name, within), f"a {role} named {name!r}")
        assert len(found) == 1, f"{len(found)} are a {role} named {name!r}"
        assert action in found[0].actions, f"the {role} {name!r} offers {found[0].actions}"
        found[0].act(action)

    def focused(self):
        """Role and name of the element that has the keyboard."""
        wanted = {"focusable", "focused"}
        return [(element.role, element.name) for element in self.in_sight() if wanted <= element.states]

    def take_focus_events(self):
        """Roles and names that have been announced as focused since the last call."""
        self._take_events()
        announced, self._focused = self._focused, []
        return announced

    def _walk(self, accessible, parent=None):
        element = Element(accessible, parent)
        if accessible != self._program and "showing" not in element.states:
            return
        yield element
        for i in range(accessible.get_child_count()):
            if child := accessible.get_child_at_index(i):
                yield from self._walk(child, element)

    def _note_focus(self, event):
        if event.detail1:
            self._focused.append((role_of(event.source), event.source.get_name()))

    @staticmethod
    def _take_events():
        while GLib.MainContext.default().iteration(False):
            pass
