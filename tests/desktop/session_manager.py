"""An X session manager. It writes its address on a line, and one line for each program that joins. A line on its standard
input ends the session: the programs are asked to save themselves, and then told to go."""

import ctypes
import select
import sys

SAVE_BOTH, SAVE_LOCAL, INTERACT_NONE, INTERACT_ANY = 2, 1, 0, 2

ice = ctypes.CDLL("libICE.so.6")
sm = ctypes.CDLL("libSM.so.6")
Pointer = ctypes.c_void_p
Callback = ctypes.CFUNCTYPE(None, Pointer, Pointer, Pointer)
Register = ctypes.CFUNCTYPE(ctypes.c_int, Pointer, Pointer, Pointer)
Permit = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_char_p)
Lost = ctypes.CFUNCTYPE(None, Pointer)


class Callbacks(ctypes.Structure):
    """Ten pairs of a function and what it is called with."""
    _fields_ = [(name, Pointer) for pair in
                ("register", "interact_request", "interact_done", "save_request", "save_phase2", "save_done", "close",
                 "set_properties", "delete_properties", "get_properties")
                for name in (pair, f"{pair}_data")]


NewClient = ctypes.CFUNCTYPE(ctypes.c_int, Pointer, Pointer, ctypes.POINTER(ctypes.c_ulong), ctypes.POINTER(Callbacks), Pointer)
for function, result in ((ice.IceComposeNetworkIdList, ctypes.c_char_p), (ice.IceAcceptConnection, Pointer),
                         (sm.SmsGenerateClientID, Pointer)):
    function.restype = result

clients = []
is_ending = False


def say(text):
    print(text, flush=True)


@Register
def register(client, _data, _previous):
    sm.SmsRegisterClientReply(Pointer(client), Pointer(sm.SmsGenerateClientID(Pointer(client))))
    sm.SmsSaveYourself(Pointer(client), SAVE_LOCAL, 0, INTERACT_NONE, 0)
    clients.append(client)
    return 1


@Callback
def save_done(client, _data, _success):
    if is_ending:
        sm.SmsDie(Pointer(client))
    else:
        sm.SmsSaveComplete(Pointer(client))
        say("joined")


@Callback
def pass_over(_client, _data, _more):
    pass


def address(callback):
    return ctypes.cast(callback, Pointer)


@NewClient
def new_client(_client, _data, mask, callbacks, _reason):
    mask[0] = (1 << 10) - 1
    for name, _ in Callbacks._fields_[::2]:
        setattr(callbacks[0], name, address(pass_over))
    callbacks[0].register, callbacks[0].save_done = address(register), address(save_done)
    return 1


@Permit
def permit(_host):
    return 1


@Lost
def lose(_connection):
    """A program has gone: no reason to end, as the library does by itself."""


def main():
    global is_ending
    ice.IceSetIOErrorHandler(lose)
    error = ctypes.create_string_buffer(256)
    count, listeners = ctypes.c_int(), ctypes.POINTER(Pointer)()
    if not sm.SmsInitialize(b"test", b"1", new_client, None, permit, len(error), error) or \
            not ice.IceListenForConnections(ctypes.byref(count), ctypes.byref(listeners), len(error), error):
        sys.exit(error.value.decode())
    listening = {ice.IceGetListenConnectionNumber(Pointer(listeners[i])): listeners[i] for i in range(count.value)}
    for listener in listening.values():
        ice.IceSetHostBasedAuthProc(Pointer(listener), permit)
    say(ice.IceComposeNetworkIdList(count, listeners).decode())
    connections = {}
    while True:
        for ready in select.select([sys.stdin, *listening, *connections], [], [])[0]:
            if ready in listening:
                status = ctypes.c_int()
                connection = ice.IceAcceptConnection(Pointer(listening[ready]), ctypes.byref(status))
                connections[ice.IceConnectionNumber(Pointer(connection))] = connection
            elif ready in connections:
                if ice.IceProcessMessages(Pointer(connections[ready]), None, None) != 0:
                    del connections[ready]
            elif sys.stdin.readline():
                is_ending = True
                for client in clients:
                    sm.SmsSaveYourself(Pointer(client), SAVE_BOTH, 1, INTERACT_ANY, 0)
            else:
                return


if __name__ == "__main__":
    main()
