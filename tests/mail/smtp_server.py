# SPDX-FileCopyrightText: The Lorvanite authors
# SPDX-License-Identifier: GPL-3.0-or-later

"""An SMTP server for the tests: smtp_server.py FOLDER SETTINGS(JSON).

Prints "port N" when it listens. Writes each message that it accepts, parsed, to FOLDER as
message-N.json with its parts in files, and each command that it receives as a line of said.txt.
A line on the standard input lets a server that waits go on.

SETTINGS, all of them optional:
  certificate, key  files; with them STARTTLS is offered, or with "smtps" TLS from the start
  smtps             true: TLS from the start
  login             [user, password]; anyone else is refused
  answers           {"MAIL": "421 ...", "RCPT": {"a@b": "550 ..."}, "DATA": "552 ..."}
  waits             true: waits for a line on the standard input before it answers a message
  fault             what it does wrong, see Faulty
  greeting, replies, dribbles   what Faulty says, see there
"""

import asyncio
import base64
import email
import email.policy
import json
import logging
import pathlib
import re
import ssl
import sys
import warnings

from aiosmtpd.smtp import SMTP, AuthResult

# The tests log in without TLS and refuse certificates on purpose.
warnings.simplefilter("ignore")
logging.disable(logging.CRITICAL)

folder = pathlib.Path(sys.argv[1])
settings = json.loads(sys.argv[2])
go_on = asyncio.Event()


def note(line):
    with open(folder / "said.txt", "a", encoding="utf-8") as file:
        file.write(line + "\n")


def hear():
    if sys.stdin.readline():
        go_on.set()
    else:
        asyncio.get_running_loop().remove_reader(sys.stdin.fileno())


def keep(sender, recipients, content, login=None):
    number = len(list(folder.glob("message-*.json"))) + 1
    message = email.message_from_bytes(content, policy=email.policy.default)
    parts = []
    for index, part in enumerate(message.walk()):
        entry = {
            "type": part.get_content_type(),
            "charset": part.get_content_charset() or "",
            "name": part.get_filename() or "",
            "disposition": part.get_content_disposition() or "",
        }
        if not part.is_multipart():
            path = folder / f"message-{number}-part-{index}"
            path.write_bytes(part.get_payload(decode=True))
            entry["content"] = str(path)
        parts.append(entry)
    record = {
        "sender": sender,
        "recipients": recipients,
        "login": login,
        "headers": [[name, str(value)] for name, value in message.items()],
        "to": [[box.display_name, box.addr_spec] for box in message["To"].addresses],
        "from": [[box.display_name, box.addr_spec] for box in message["From"].addresses],
        "longest": max(len(line) for line in content.split(b"\r\n")),
        "defects": [str(defect) for part in message.walk() for defect in part.defects],
        "parts": parts,
    }
    (folder / f"message-{number}-raw").write_bytes(content)
    (folder / f"message-{number}.json").write_text(json.dumps(record), encoding="utf-8")


class Handler:
    async def handle_MAIL(self, server, session, envelope, address, options):
        note(f"MAIL {address}")
        answer = settings.get("answers", {}).get("MAIL")
        if answer:
            return answer
        envelope.mail_from = address
        return "250 OK"

    async def handle_RCPT(self, server, session, envelope, address, options):
        note(f"RCPT {address}")
        answer = settings.get("answers", {}).get("RCPT", {}).get(address)
        if answer:
            return answer
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        note("DATA")
        if settings.get("waits"):
            await go_on.wait()
        answer = settings.get("answers", {}).get("DATA")
        if answer:
            return answer
        login = session.auth_data.decode() if session.auth_data else None
        keep(envelope.mail_from, envelope.rcpt_tos, envelope.content, login)
        return "250 Taken"


def authenticate(server, session, envelope, mechanism, data):
    wanted = [part.encode() for part in settings["login"]]
    good = [data.login, data.password] == wanted
    note(f"AUTH {mechanism} {'TLS' if session.ssl else 'plain'} {'good' if good else 'bad'}")
    return AuthResult(success=good, handled=False, auth_data=data.login)


class Faulty:
    """A server with one fault.

    silent            takes the connection and says nothing
    greets: TEXT      greets with TEXT and closes
    no login          offers no login, and accepts any message
    echo              answers a login with the user's password
    closes in data    closes in the middle of the message
    stalls in data    stops reading in the middle of the message until it is told to go on
    closes after data reads the whole message and closes without an answer
    silent after data reads the whole message and does not answer
    wants full name   refuses a client that gives neither a full host name nor an address literal
    scripted          no fault but those of "replies"

    "greeting" is its greeting. "replies" maps a command, or "." for the message, to its reply: null
    closes the connection, the empty text says nothing. "{3*TEXT}" in a reply repeats the text. With
    "dribbles", it sends a byte at a time.
    """

    def __init__(self, fault):
        self.fault = fault

    async def __call__(self, reader, writer):
        try:
            await self.talk(reader, writer)
        except (ConnectionError, asyncio.IncompleteReadError):
            note("cut off")
        finally:
            writer.close()

    async def talk(self, reader, writer):
        async def say(line):
            line = re.sub(r"\{(\d+)\*([^}]*)\}", lambda m: int(m[1]) * m[2], line)
            data = line.encode("utf-8", "surrogateescape") + b"\r\n"
            size = 1 if settings.get("dribbles") else len(data)
            for start in range(0, len(data), size):
                writer.write(data[start : start + size])
                await writer.drain()
                if size < len(data):
                    await asyncio.sleep(0.001)

        if self.fault == "silent":
            await reader.read()
            return
        if self.fault.startswith("greets: "):
            await say(self.fault[8:])
            return
        await say(settings.get("greeting", "220 here"))
        replies = settings.get("replies", {})
        recipients = []
        while True:
            line = (await reader.readuntil(b"\r\n")).decode().rstrip()
            note(line)
            word = line.split(" ")[0].upper()
            if word in replies:
                if replies[word] is None:
                    return
                if replies[word]:
                    await say(replies[word])
            elif word in ("EHLO", "HELO") and self.refuses(line):
                await say("504 I need a full name")
            elif word == "EHLO":
                await say("250-here")
                await say("250 AUTH PLAIN" if self.fault == "echo" else "250 8BITMIME")
            elif word == "AUTH":
                secret = line.split(" ")[2] if line.count(" ") > 1 else None
                if secret is None:
                    await say("334 ")
                    secret = (await reader.readuntil(b"\r\n")).decode().rstrip()
                password = base64.b64decode(secret).split(b"\0")[2].decode()
                await say(f"535 no one has the password {password} ({secret})")
            elif word == "RCPT":
                recipients.append(line[9:-1])
                await say("250 OK")
            elif word == "DATA":
                await say("354 go on")
                await self.take(reader, writer, say, recipients)
                if self.fault != "scripted":
                    return
            elif word == "QUIT":
                await say("221 bye")
                return
            else:
                await say("250 OK")

    def refuses(self, hello):
        name = hello.split(" ")[1]
        is_literal = name.startswith("[") and name.endswith("]")
        return self.fault == "wants full name" and not is_literal and "." not in name

    async def take(self, reader, writer, say, recipients):
        if self.fault == "closes in data":
            await reader.read(1000)
            writer.transport.abort()
            return
        content = bytearray()
        if self.fault == "stalls in data":
            content += await reader.read(1000)
            note("stalls")
            await go_on.wait()
        while not content.endswith(b"\r\n.\r\n"):
            piece = await reader.read(65536)
            if not piece:
                note("cut off")
                return
            content += piece
        note("whole")
        if self.fault == "silent after data":
            await reader.read()
        elif self.fault != "closes after data":
            reply = settings.get("replies", {}).get(".", "250 Taken")
            if reply is None:
                raise ConnectionError
            if reply.startswith("250"):
                keep("", recipients, bytes(content[:-3]))
            await say(reply)


async def main():
    asyncio.get_running_loop().add_reader(sys.stdin.fileno(), hear)
    context = None
    if "certificate" in settings:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(settings["certificate"], settings["key"])
    smtps = settings.get("smtps", False)

    def smtp():
        return SMTP(
            Handler(),
            hostname="here",
            data_size_limit=200_000_000,
            enable_SMTPUTF8=True,
            tls_context=None if smtps else context,
            authenticator=authenticate if "login" in settings else None,
            auth_required="login" in settings,
            auth_require_tls=False,
        )

    tls = {"ssl": context} if smtps else {}
    if "fault" in settings:
        server = await asyncio.start_server(Faulty(settings["fault"]), "127.0.0.1", 0, **tls)
    else:
        loop = asyncio.get_running_loop()
        server = await loop.create_server(smtp, "127.0.0.1", 0, **tls)
    print("port", server.sockets[0].getsockname()[1], flush=True)
    await asyncio.Event().wait()


asyncio.run(main())
