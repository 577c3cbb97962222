"""An HTTPS server for tests: it behaves by path, and misbehaves by path too.

usage: https_server.py CERTIFICATE KEY [HOST [FOLDER]]

GET /files/NAME answers with a file of the folder, /half/NAME with the first half of it though it
promises all, /begun/NAME with the first half and then nothing for as long as the client waits.
GET /to?URL redirects there.

Prints its port when it listens. GET /stats tells the journal: how many TLS connections were made and
which requests came, as "METHOD PATH" lines, "answered PATH" after the answer to a HEAD was written;
asking for it is not counted.
"""

import http.server
import json
import os
import socketserver
import ssl
import sys
import threading

journal = {"connections": 0, "requests": []}
lock = threading.Lock()
posted = threading.Event()


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    disable_nagle_algorithm = True

    def log_message(self, *_):
        pass

    def setup(self):
        self.request.do_handshake()
        self.counted = False
        super().setup()

    def note(self):
        with lock:
            if not self.counted:
                self.counted = True
                journal["connections"] += 1
            journal["requests"].append(self.command + " " + self.path)

    def answer(self, status, body, headers=()):
        self.send_response(status)
        for name, value in headers:
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        if self.command != "HEAD":
            self.wfile.write(body)

    def answer_file(self, place, name):
        with open(os.path.join(folder, name), "rb") as file:
            body = file.read()
        if place == "files":
            self.answer(200, body)
            return
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body[: len(body) // 2])
        if place == "begun":
            self.rfile.read(1)
        self.close_connection = True

    def do_HEAD(self):
        self.note()
        if self.path == "/held":
            posted.wait()
        self.answer(200, b"")
        with lock:
            journal["requests"].append("answered " + self.path)
        if self.path == "/once":
            self.close_connection = True

    def do_GET(self):
        if self.path == "/stats":
            with lock:
                body = json.dumps(journal).encode()
            self.answer(200, body)
            return
        self.note()
        place, _, name = self.path[1:].partition("/")
        if place in ("files", "half", "begun") and os.path.isfile(os.path.join(folder, name)):
            self.answer_file(place, name)
        elif self.path.startswith("/to?"):
            self.answer(302, b"moved", [("Location", self.path[4:])])
        elif self.path == "/redirect":
            self.answer(302, b"moved", [("Location", "/target")])
        elif self.path == "/cookie":
            seen = self.headers.get("Cookie", "none").encode()
            self.answer(200, seen, [("Set-Cookie", "a=b")])
        elif self.path == "/large":
            self.answer(200, bytes(range(256)) * (20 * 4096))
        elif self.path == "/endless":
            self.send_response(200)
            self.end_headers()
            while True:
                self.wfile.write(bytes(1 << 20))
        elif self.path == "/never":
            self.rfile.read(1)
        elif self.path == "/stalls":
            self.send_response(200)
            self.send_header("Content-Length", "1000")
            self.end_headers()
            self.wfile.write(b"begun")
            self.rfile.read(1)
        elif self.path == "/cut":
            self.send_response(200)
            self.send_header("Content-Length", "1000")
            self.end_headers()
            self.wfile.write(b"begun")
            self.close_connection = True
        elif self.path == "/silent":
            self.close_connection = True
        elif self.path == "/garbage":
            self.wfile.write(b"220 mail server ready\r\n")
            self.close_connection = True
        else:
            self.answer(404, b"no such page")

    def do_POST(self):
        self.note()
        body = self.rfile.read(int(self.headers["Content-Length"]))
        posted.set()
        if self.path == "/echo":
            self.answer(200, body)
            return
        if self.path == "/v1/audio/transcriptions":
            self.answer(200, b'{"text": "hello"}')
            return
        if self.path.startswith("/cut/"):
            self.close_connection = True
            return
        told = {
            "bytes": len(body),
            "expect": self.headers.get("Expect", "none"),
            "authorization": self.headers.get("Authorization", "none"),
        }
        self.answer(200, json.dumps(told).encode())


class Server(socketserver.ThreadingMixIn, http.server.HTTPServer):
    daemon_threads = True
    request_queue_size = 64

    def handle_error(self, *_):
        pass  # a refused handshake or a client that went away


host = sys.argv[3] if len(sys.argv) > 3 else "127.0.0.1"
folder = sys.argv[4] if len(sys.argv) > 4 else "/nonexistent"
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(sys.argv[1], sys.argv[2])
server = Server((host, 0), Handler)
# Each handshake is done by its connection's own thread.
server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
print(server.server_address[1], flush=True)
server.serve_forever()
