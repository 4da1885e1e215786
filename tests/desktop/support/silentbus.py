"""A session bus that takes connections and says nothing, until it is told to speak: then it is the desktop's own."""

import os
import socket
import threading


class SilentBus:
    """Owned by the test, which closes it."""

    def __init__(self, desktop):
        self.real = desktop.environment["DBUS_SESSION_BUS_ADDRESS"].split("path=")[1].split(",")[0]
        self.path = os.path.join(desktop.folder, "silent-bus")
        self.address = f"unix:path={self.path}"
        self.spoken_to = threading.Event()
        self.may_speak = threading.Event()
        self.closed = False
        self.open_sockets = []
        self.listener = socket.socket(socket.AF_UNIX)
        self.listener.bind(self.path)
        self.listener.listen(64)
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while not self.closed:
            try:
                client, _ = self.listener.accept()
            except OSError:
                return
            self.open_sockets.append(client)
            self.spoken_to.set()
            threading.Thread(target=self.serve, args=(client,), daemon=True).start()

    def serve(self, client):
        self.may_speak.wait()
        if self.closed:
            return
        server = socket.socket(socket.AF_UNIX)
        server.connect(self.real)
        self.open_sockets.append(server)
        threading.Thread(target=self.pump, args=(server, client), daemon=True).start()
        self.pump(client, server)

    @staticmethod
    def pump(source, target):
        try:
            while data := source.recv(65536):
                target.sendall(data)
            target.shutdown(socket.SHUT_WR)
        except OSError:
            pass

    def speak(self):
        self.may_speak.set()

    def close(self):
        self.closed = True
        self.may_speak.set()
        for one in (self.listener, *self.open_sockets):
            one.close()
