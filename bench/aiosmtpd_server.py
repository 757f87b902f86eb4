#!/usr/bin/python3
"""Receives mail with aiosmtpd: aiosmtpd_server.py <port> <folder>

Each message is a file, flushed with its folder before it is acknowledged.
"""

import asyncio
import os
import sys

from aiosmtpd.smtp import SMTP

FOLDER = sys.argv[2]


def flush(path, flags, content=None):
    descriptor = os.open(path, flags, 0o666)
    if content is not None:
        os.write(descriptor, content)
    os.fsync(descriptor)
    os.close(descriptor)


class Handler:
    count = 0

    async def handle_DATA(self, server, session, envelope):
        Handler.count += 1
        path = os.path.join(FOLDER, str(Handler.count))
        flush(path, os.O_WRONLY | os.O_CREAT, envelope.content)
        flush(FOLDER, os.O_RDONLY | os.O_DIRECTORY)
        return "250 OK"


async def main():
    loop = asyncio.get_running_loop()
    server = await loop.create_server(lambda: SMTP(Handler(), hostname="localhost", loop=loop), "127.0.0.1", int(sys.argv[1]))
    await server.serve_forever()


asyncio.run(main())
