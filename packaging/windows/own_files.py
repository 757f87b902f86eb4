"""A user who has files of his own in every place that the program and its installer know."""

import hashlib

OWN_PORTS = {"web": 8080, "ftp": 2121, "smtp": 2525, "pop3": 8110}

# What the user has where, and what the program may do to it while it runs. Installing, updating and
# removing may do nothing. Paths are relative to the drive; USER is the user's folder.
KEEPS, APPENDS, REWRITES = range(3)
DATA = "USER/AppData/Local/Tarnwerk"
MENU = "USER/AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
CHOSEN = "own 程序"  # the folder that the user names when installing
OWN_FILES = {
    # The data folder.
    f"{DATA}/Server.ini": KEEPS,
    f"{DATA}/startflg.dat": REWRITES,
    f"{DATA}/IndexFN.Log": KEEPS,
    f"{DATA}/EnabalExecute.txt": KEEPS,
    f"{DATA}/TIPOFDAY.TXT": KEEPS,
    f"{DATA}/ETUser.dzt": KEEPS,
    f"{DATA}/Web.log": APPENDS,
    f"{DATA}/Mail.log": APPENDS,
    f"{DATA}/RunErr.Log": APPENDS,
    f"{DATA}/notes of my own.txt": KEEPS,
    # The services' folders, in the usual places and where the settings say.
    f"{DATA}/wwwroot/index.htm": KEEPS,
    f"{DATA}/wwwroot/cgi-bin/own.cgi": KEEPS,
    f"{DATA}/wwwroot/Search/own.txt": KEEPS,
    f"{DATA}/ftproot/upload/own.bin": KEEPS,
    f"{DATA}/mailroot/User/bob/UserInfo.ini": KEEPS,
    f"{DATA}/mailroot/User/bob/Message_1.eml": KEEPS,
    "own 站点/wwwroot/index.htm": KEEPS,
    "own 站点/ftproot/own.txt": KEEPS,
    "own 站点/mailroot/User/bob/Message_1.eml": KEEPS,
    "own 站点/mailroot/User/bob/Accessary/photo.jpg": KEEPS,
    # The window's state, and other entries of the start menu.
    "USER/AppData/Roaming/Tarnwerk/window.ini": REWRITES,
    f"{MENU}/Tarnwerk at home.lnk": KEEPS,
    f"{MENU}/StartUp/Another.lnk": KEEPS,
    # The folder that the program is installed in, with names that the program has too.
    f"{CHOSEN}/readme.txt": KEEPS,
    f"{CHOSEN}/licences.txt": KEEPS,
    f"{CHOSEN}/Tarnwerk.exe": KEEPS,
    f"{CHOSEN}/sample/wwwroot/index.htm": KEEPS,
    f"{CHOSEN}/sample/own.htm": KEEPS,
    # A portable program.
    "own stick/Tarnwerk/Server.ini": KEEPS,
    "own stick/Tarnwerk/wwwroot/index.htm": KEEPS,
}
OWN_SETTINGS = r"""; mine
[WebServer Options]
WebRootDir=C:\own 站点\wwwroot
TCPPort=8080
DNS=localhost
Read=1
[FtpServer Options]
FtpServer Root=C:\own 站点\ftproot
FtpServer UploadDir=C:\own 站点\ftproot
FtpPort=2121
DNS=localhost
[MailServer Options]
MailServer Root=C:\own 站点\mailroot
SMTP Port=2525
POP3 Port=8110
DNS=localhost
"""
# What the user has in the registry. The start with the system is that of another program of this name.
OWN_VALUES = {
    (r"HKCU\Software\Tarnwerk\Tarnwerk\own", "own"): "value",
    (r"HKLM\Software\Microsoft\Windows\CurrentVersion\Run", "Tarnwerk"): r"C:\own stick\Tarnwerk\Tarnwerk.exe",
    (r"HKLM\Software\Microsoft\Windows\CurrentVersion\Run", "Another"): r"C:\another.exe",
}


class OwnFiles:
    """The user's files and settings, as they were put there, and as they are."""

    def __init__(self, machine):
        self.machine = machine
        for path in OWN_FILES:
            content = OWN_SETTINGS if path == f"{DATA}/Server.ini" else f"own: {path}\r\n"
            file = self.file(path)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(content.encode())
        for (key, name), value in OWN_VALUES.items():
            machine.run("reg", "add", key, "/v", name, "/d", value, "/f")
        self.first = {path: self.file(path).read_bytes() for path in OWN_FILES}

    def file(self, path):
        user = str(self.machine.user.relative_to(self.machine.drive))
        return self.machine.drive / path.replace("USER", user)

    def everything(self):
        """Time and hash of all files in these places, and these registry keys."""
        state = {}
        for place in (DATA, "own 站点", "own stick", CHOSEN, MENU, "USER/AppData/Roaming/Tarnwerk"):
            for path in self.file(place).rglob("*"):
                if path.is_file() and not self.is_of_installation(path):
                    state[path] = (path.stat().st_mtime_ns, hashlib.sha256(path.read_bytes()).hexdigest())
        for key in {key for key, _ in OWN_VALUES}:
            state[key] = self.machine.run("reg", "query", key, "/s")
        return state

    def is_of_installation(self, path):
        return (path.is_relative_to(self.file(CHOSEN) / "Tarnwerk") or
                path in (self.machine.start_menu(), self.machine.start_menu(folder="StartUp")))

    def spoiled(self):
        """What the program or its installer has changed more than it may."""
        def is_kept(path, rule):
            if not self.file(path).exists():
                return False
            now, first = self.file(path).read_bytes(), self.first[path]
            return rule == REWRITES or now == first or rule == APPENDS and now.startswith(first)
        values = [name for (key, name), value in OWN_VALUES.items()
                  if value not in self.machine.run("reg", "query", key, "/v", name)]
        return values + [path for path, rule in OWN_FILES.items() if not is_kept(path, rule)]
