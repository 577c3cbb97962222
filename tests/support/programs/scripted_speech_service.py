#!/usr/bin/env python3
"""A speech service that answers as it is told, whatever it hears.

usage: scripted_speech_service.py FOLDER

Prints its port. Each transcription is answered from FOLDER/reply, a JSON object: "status", "text",
"delay" in seconds, and "drop" to hang up instead. What was delivered as a text is a line of
FOLDER/served.
"""
import json
import sys
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

folder = sys.argv[1]


class Handler(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_HEAD(self):
        self.send_response(200)
        self.send_header("Content-Length", "0")
        self.end_headers()

    def do_POST(self):
        self.rfile.read(int(self.headers["Content-Length"]))
        with open(folder + "/reply", encoding="utf-8") as file:
            reply = json.load(file)
        time.sleep(reply["delay"])
        if reply["drop"]:
            self.close_connection = True
            return
        body = json.dumps({"text": reply["text"]}).encode()
        self.send_response(reply["status"])
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)
        if reply["status"] == 200:
            with open(folder + "/served", "a", encoding="utf-8") as file:
                file.write(reply["text"] + "\n")

    def log_message(self, *arguments):
        pass


server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
server.daemon_threads = True
print(server.server_port, flush=True)
server.serve_forever()
