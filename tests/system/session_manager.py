"""A desktop's session manager (XSMP), as a program of its own: it prints the address under which it listens, then the
command with which each client would be started again. SIGTERM ends the session: the clients are told to end.

    python3 session_manager.py
"""

import ctypes
import select
import signal
from ctypes import CFUNCTYPE, POINTER, Structure, byref, c_char_p, c_int, c_ulong, c_void_p, cast

ICE = ctypes.CDLL("libICE.so.6")
SM = ctypes.CDLL("libSM.so.6")
ICE.IceComposeNetworkIdList.restype = c_char_p
ICE.IceAcceptConnection.restype = c_void_p
SM.SmsGenerateClientID.restype = c_char_p

ERROR_BYTES = 256
ALL_CALLBACKS = 0x3FF
SAVE_LOCAL = 1


class Value(Structure):
    _fields_ = [("length", c_int), ("bytes", c_void_p)]


class Property(Structure):
    _fields_ = [("name", c_char_p), ("type", c_char_p), ("count", c_int), ("values", POINTER(Value))]


class Callback(Structure):
    _fields_ = [("function", c_void_p), ("data", c_void_p)]


# In the order in which the library declares them.
CALLBACKS = (
    ("register_client", CFUNCTYPE(c_int, c_void_p, c_void_p, c_char_p)),
    ("interact_request", CFUNCTYPE(None, c_void_p, c_void_p, c_int)),
    ("interact_done", CFUNCTYPE(None, c_void_p, c_void_p, c_int)),
    ("save_request", CFUNCTYPE(None, c_void_p, c_void_p, c_int, c_int, c_int, c_int, c_int)),
    ("phase2_request", CFUNCTYPE(None, c_void_p, c_void_p)),
    ("save_done", CFUNCTYPE(None, c_void_p, c_void_p, c_int)),
    ("close", CFUNCTYPE(None, c_void_p, c_void_p, c_int, c_void_p)),
    ("set_properties", CFUNCTYPE(None, c_void_p, c_void_p, c_int, POINTER(POINTER(Property)))),
    ("delete_properties", CFUNCTYPE(None, c_void_p, c_void_p, c_int, c_void_p)),
    ("get_properties", CFUNCTYPE(None, c_void_p, c_void_p)),
)


class Callbacks(Structure):
    _fields_ = [(name, Callback) for name, _ in CALLBACKS]


NEW_CLIENT = CFUNCTYPE(c_int, c_void_p, c_void_p, POINTER(c_ulong), POINTER(Callbacks), POINTER(c_char_p))
ADMIT = CFUNCTYPE(c_int, c_char_p)
BROKEN = CFUNCTYPE(None, c_void_p)


class SessionManager:
    def __init__(self):
        self._clients = []
        self._ends = False
        self._functions = {name: form(getattr(self, f"_{name}", lambda *_: None)) for name, form in CALLBACKS}
        self._kept = (NEW_CLIENT(self._new_client), ADMIT(lambda _: 1), BROKEN(lambda _: None))
        new_client, self._admit, broken = self._kept
        ICE.IceSetIOErrorHandler(broken)  # a client that has ended is no error
        error = ctypes.create_string_buffer(ERROR_BYTES)
        if not SM.SmsInitialize(b"test", b"1", new_client, None, self._admit, ERROR_BYTES, error):
            raise RuntimeError(error.value.decode())
        self._listen(error)

    def _listen(self, error):
        ICE._IceTransNoListen(b"tcp")  # on this machine only
        count, listeners = c_int(), POINTER(c_void_p)()
        if not ICE.IceListenForConnections(byref(count), byref(listeners), ERROR_BYTES, error):
            raise RuntimeError(error.value.decode())
        self._listeners = {}
        for listener in (c_void_p(listeners[i]) for i in range(count.value)):
            ICE.IceSetHostBasedAuthProc(listener, self._admit)
            self._listeners[ICE.IceGetListenConnectionNumber(listener)] = listener
        self._connections = {}
        print(ICE.IceComposeNetworkIdList(count, listeners).decode(), flush=True)

    def run(self):
        """Until the session has ended and the last client has gone."""
        while not self._ends or self._connections:
            for number in select.select([*self._listeners, *self._connections], [], [], 0.1)[0]:
                self._accept(number) if number in self._listeners else self._process(number)

    def end(self, *_):
        self._ends = True
        for client in self._clients:
            SM.SmsDie(client)

    def _accept(self, number):
        connection = ICE.IceAcceptConnection(self._listeners[number], byref(c_int()))
        if connection:
            self._connections[ICE.IceConnectionNumber(c_void_p(connection))] = c_void_p(connection)

    def _process(self, number):
        if ICE.IceProcessMessages(self._connections[number], None, None):
            del self._connections[number]

    def _new_client(self, _connection, _data, mask, callbacks, _failure):
        mask[0] = ALL_CALLBACKS
        for name, function in self._functions.items():
            setattr(callbacks.contents, name, Callback(cast(function, c_void_p), None))
        return 1

    def _register_client(self, client, _data, previous):
        self._clients.append(c_void_p(client))
        SM.SmsRegisterClientReply(c_void_p(client), previous or SM.SmsGenerateClientID(c_void_p(client)))
        SM.SmsSaveYourself(c_void_p(client), SAVE_LOCAL, 0, 0, 0)
        return 1

    def _phase2_request(self, client, _data):
        SM.SmsSaveYourselfPhase2(c_void_p(client))

    def _save_done(self, client, _data, _success):
        SM.SmsSaveComplete(c_void_p(client))

    def _set_properties(self, _client, _data, count, properties):
        for property_ in (properties[i].contents for i in range(count)):
            if property_.name == b"RestartCommand":
                values = (property_.values[i] for i in range(property_.count))
                print(*(ctypes.string_at(value.bytes, value.length).decode() for value in values), sep="\t", flush=True)


if __name__ == "__main__":
    manager = SessionManager()
    signal.signal(signal.SIGTERM, manager.end)
    manager.run()
