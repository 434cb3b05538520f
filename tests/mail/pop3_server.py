# SPDX-FileCopyrightText: The Lorvanite authors
# SPDX-License-Identifier: GPL-3.0-or-later

"""A small POP3 server for the tests: pop3_server.py FOLDER SETTINGS(JSON).

SETTINGS: login [user, password]; capabilities, more lines of its answer to CAPA, optional. Prints
"port N" when it listens. Writes each command that it receives as a line of said.txt in FOLDER, a
password as "good" or "bad".
"""

import json
import pathlib
import socketserver
import sys

folder = pathlib.Path(sys.argv[1])
settings = json.loads(sys.argv[2])


def note(line):
    with open(folder / "said.txt", "a", encoding="utf-8") as file:
        file.write(line + "\n")


class Session(socketserver.StreamRequestHandler):
    def say(self, line):
        self.wfile.write(line.encode() + b"\r\n")

    def handle(self):
        self.say("+OK here")
        user = ""
        for raw in self.rfile:
            word, _, rest = raw.decode().rstrip("\r\n").partition(" ")
            word = word.upper()
            if word == "USER":
                user = rest
                note(f"USER {user}")
                self.say("+OK")
            elif word == "PASS":
                good = [user, rest] == settings["login"]
                note(f"PASS {'good' if good else 'bad'}")
                self.say("+OK in" if good else "-ERR no such login")
            elif word == "CAPA":
                self.say("\r\n".join(["+OK", "USER", *settings.get("capabilities", []), "."]))
            elif word == "NOOP":
                note("NOOP")
                self.say("+OK")
            elif word == "QUIT":
                self.say("+OK bye")
                return
            else:
                self.say("-ERR what")


with socketserver.ThreadingTCPServer(("127.0.0.1", 0), Session) as server:
    server.daemon_threads = True
    print("port", server.server_address[1], flush=True)
    server.serve_forever()
