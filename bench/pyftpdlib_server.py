#!/usr/bin/python3
"""Serves a folder to guests with pyftpdlib: pyftpdlib_server.py <port> <folder>"""

import logging
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer

logging.disable(logging.CRITICAL)
FTPHandler.authorizer = DummyAuthorizer()
FTPHandler.authorizer.add_anonymous(sys.argv[2], perm="elrw")
FTPServer(("127.0.0.1", int(sys.argv[1])), FTPHandler).serve_forever()
