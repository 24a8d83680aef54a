"""Stands between programs and the X server, which may serve others between any two requests of one program. The relay
makes that happen where it can hurt: a request to let the pointer go waits until its connection asks for more, or until
nobody asks for anything."""

import errno
import os
import selectors
import socket
import threading

UNGRAB_POINTER = 27
SOCKET = "/tmp/.X11-unix/X"
# Of displays; no server gets there by counting from 0.
FIRST_NUMBER = 1000
PIECE = 65536
# Nobody asks for anything.
SILENCE_SECONDS = 0.005
# More than anybody sends at once beside the bytes.
DESCRIPTORS = 16


class Relay:
    """`display` is what stands in DISPLAY for the programs; `held_back` counts the requests that had to wait, `waiting`
    are the connections on which one does."""

    def __init__(self):
        self.held_back = 0
        self.waiting = set()
        self._server = SOCKET + os.environ["DISPLAY"].lstrip(":").partition(".")[0]
        self._selector = selectors.DefaultSelector()
        self._stop, stopped = socket.socketpair()
        self._selector.register(stopped, selectors.EVENT_READ, None)
        listener, number = listen()
        self.display = f":{number}"
        self._selector.register(listener, selectors.EVENT_READ, lambda: self._accept(listener))
        self._thread = threading.Thread(target=self._run)
        self._thread.start()

    def close(self):
        """Also the connections that are still there."""
        self._stop.close()
        self._thread.join()
        for key in list(self._selector.get_map().values()):
            key.fileobj.close()
        self._selector.close()

    def _run(self):
        while True:
            ready = self._selector.select(SILENCE_SECONDS if self.waiting else None)
            while not ready and self.waiting:
                self.waiting.pop().go_on()
            for key, _ in ready:
                if key.data is None:
                    return
                if key.fileobj.fileno() >= 0:  # not closed a moment ago, with its other end
                    key.data()

    def _accept(self, listener):
        program = listener.accept()[0]
        server = socket.socket(socket.AF_UNIX)
        server.connect(self._server)
        requests = Requests(self, server)
        for source, target, choose in ((program, server, requests.choose), (server, program, lambda data: data)):
            self._selector.register(source, selectors.EVENT_READ, Direction(self, source, target, choose).carry)

    def forget(self, *ends):
        for end in ends:
            self._selector.unregister(end)
            end.close()


def listen():
    """As the server of a display that has no other; gives its number too."""
    number = FIRST_NUMBER
    while True:
        listener = socket.socket(socket.AF_UNIX)
        try:
            listener.bind(f"\0{SOCKET}{number}")  # no file; it is here that clients look first
            listener.listen()
            return listener, number
        except OSError as error:
            listener.close()
            if error.errno != errno.EADDRINUSE:
                raise
            number += 1


class Direction:
    """`choose` says which bytes go on now, given those that have come."""

    def __init__(self, relay, source, target, choose):
        self._relay, self._source, self._target, self._choose = relay, source, target, choose
        self._descriptors = []

    def carry(self):
        try:
            data, descriptors, _, _ = socket.recv_fds(self._source, PIECE, DESCRIPTORS)
            self._descriptors += descriptors
            chosen = self._choose(data)
            if chosen:
                sent = socket.send_fds(self._target, [chosen], self._descriptors)
                self._target.sendall(chosen[sent:])
        except ConnectionError:
            data = chosen = b""
        if chosen or not data:
            while self._descriptors:
                os.close(self._descriptors.pop())
        if not data:
            self._relay.forget(self._source, self._target)


class Requests:
    """What a program asks on one connection."""

    def __init__(self, relay, server):
        self._relay, self._server = relay, server
        self._rest = b""
        self._waiting = b""
        self._has_begun = False

    def choose(self, data):
        self._rest += data
        chosen = b""
        while length := self._length():
            request, self._rest = self._rest[:length], self._rest[length:]
            chosen += self._waiting
            self._waiting = b""
            self._relay.waiting.discard(self)
            if self._has_begun and request[0] == UNGRAB_POINTER:
                self._relay.held_back += 1
                self._relay.waiting.add(self)
                self._waiting = request
            else:
                chosen += request
            self._has_begun = True
        return chosen

    def go_on(self):
        """What waits waits no longer."""
        try:
            self._server.sendall(self._waiting)
        except OSError:
            return  # the connection has been closed since
        self._waiting = b""

    def _number(self, at, size):
        return int.from_bytes(self._rest[at:at + size], "little")

    def _length(self):
        """Of the next request; 0 as long as not all of it is here."""
        if self._has_begun:
            # A length of 0 says that it is in the next four bytes.
            length = 4 * (self._number(2, 2) or self._number(4, 4))
        elif len(self._rest) >= 12:
            length = 12 + sum(-(-self._number(at, 2) // 4) * 4 for at in (6, 8))  # the two halves of the cookie
        else:
            return 0
        return length if length <= len(self._rest) else 0
