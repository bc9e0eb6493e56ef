"""A program that holds control + option + command with one key, given by its X keysym's name, until it is ended. It
writes a line when it has the key."""

import ctypes
import signal
import sys

CONTROL_ALT_SUPER = (1 << 2) | (1 << 3) | (1 << 6)
ASYNCHRONOUS = 1


def main():
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    x11.XStringToKeysym.restype = ctypes.c_ulong
    x11.XKeysymToKeycode.restype = ctypes.c_ubyte
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    keysym = ctypes.c_ulong(x11.XStringToKeysym(sys.argv[1].encode()))
    key = ctypes.c_int(x11.XKeysymToKeycode(display, keysym))
    root = ctypes.c_ulong(x11.XDefaultRootWindow(display))
    # Whoever has it already makes the X library end this program.
    x11.XGrabKey(display, key, CONTROL_ALT_SUPER, root, 0, ASYNCHRONOUS, ASYNCHRONOUS)
    x11.XSync(display, 0)
    print("held", flush=True)
    signal.pause()


if __name__ == "__main__":
    main()
