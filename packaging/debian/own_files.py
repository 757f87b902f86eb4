"""A user who has files of his own in every place that the program knows, and an administrator who has."""

import hashlib

OWNER = "bob"
OWN_PORTS = {"web": 8080, "ftp": 2121, "smtp": 2525, "pop3": 8110}

# The owner's files, in every place that the program knows: what they are, and what the program may do to
# them while it runs. Installing, updating and removing may do nothing.
KEEPS, APPENDS, REWRITES = range(3)
PLACE = "home/bob/.local/share/tarnwerk"
OWN_FILES = {
    # The program directory.
    f"{PLACE}/Server.ini": KEEPS,
    f"{PLACE}/startflg.dat": REWRITES,
    f"{PLACE}/IndexFN.Log": KEEPS,
    f"{PLACE}/EnabalExecute.txt": KEEPS,
    f"{PLACE}/TIPOFDAY.TXT": KEEPS,
    f"{PLACE}/ETUser.dzt": KEEPS,
    f"{PLACE}/Web.log": APPENDS,
    f"{PLACE}/Mail.log": APPENDS,
    f"{PLACE}/RunErr.Log": APPENDS,
    f"{PLACE}/notes of my own.txt": KEEPS,
    # The services' folders, in the usual places and where the settings say.
    f"{PLACE}/wwwroot/index.htm": KEEPS,
    f"{PLACE}/wwwroot/cgi-bin/own.cgi": KEEPS,
    f"{PLACE}/wwwroot/Search/own.txt": KEEPS,
    f"{PLACE}/ftproot/upload/own.bin": KEEPS,
    f"{PLACE}/mailroot/User/bob/UserInfo.ini": KEEPS,
    f"{PLACE}/mailroot/User/bob/Message_1.eml": KEEPS,
    "srv/bob/wwwroot/index.htm": KEEPS,
    "srv/bob/ftproot/own.txt": KEEPS,
    "srv/bob/mailroot/User/bob/Message_1.eml": KEEPS,
    "srv/bob/mailroot/User/bob/Accessary/photo.jpg": KEEPS,
    # Program directories chosen by TARNWERK_HOME and XDG_DATA_HOME.
    "home/bob/elsewhere/Server.ini": KEEPS,
    "home/bob/data/tarnwerk/wwwroot/index.htm": KEEPS,
    # Settings and state of the user, the start at login, and changes to the unit.
    "home/bob/.config/Tarnwerk/registry.ini": REWRITES,
    "home/bob/.config/Tarnwerk/settings.ini": KEEPS,
    "home/bob/.config/Tarnwerk/window.ini": KEEPS,
    "home/bob/.config/autostart/Tarnwerk.desktop": KEEPS,
    "home/bob/.config/systemd/user/tarnwerk.service.d/own.conf": KEEPS,
    # The administrator's.
    "etc/hosts": KEEPS,
    "etc/systemd/system/tarnwerk.service": KEEPS,
    "var/lib/tarnwerk/site/wwwroot/index.htm": KEEPS,
    "root/.local/share/tarnwerk/wwwroot/index.htm": KEEPS,
    "usr/local/bin/tarnwerk-backup": KEEPS,
}
OWN_SETTINGS = """; mine
[WebServer Options]
WebRootDir=/srv/bob/wwwroot
TCPPort=8080
DNS=localhost
Read=1
[FtpServer Options]
FtpServer Root=/srv/bob/ftproot
FtpServer UploadDir=/srv/bob/ftproot
FtpPort=2121
DNS=localhost
[MailServer Options]
MailServer Root=/srv/bob/mailroot
SMTP Port=2525
POP3 Port=8110
DNS=localhost
"""


class OwnFiles:
    """The owner's files, as they were put there, and as they are."""

    def __init__(self, debian):
        self.root = debian.root
        for path in OWN_FILES:
            content = OWN_SETTINGS if path == f"{PLACE}/Server.ini" else f"own: {path}\r\n"
            if path == "etc/hosts":
                content = "127.0.0.1 localhost\n# own\n"
            file = self.root / path
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(content.encode())
        debian.run("chown", "-R", f"{OWNER}:", f"/home/{OWNER}", f"/srv/{OWNER}")
        self.first = {path: (self.root / path).read_bytes() for path in OWN_FILES}

    def everything(self):
        """Owner, rights, time and hash of all in the places where users and administrators have files."""
        files = {}
        for place in ("home", "root", "srv", "var/lib/tarnwerk", "etc/systemd/system/tarnwerk.service",
                      "etc/hosts", "usr/local"):
            for path in [self.root / place, *(self.root / place).rglob("*")]:
                facts = path.lstat()
                content = path.read_bytes() if path.is_file() and not path.is_symlink() else b""
                # What the test itself puts there.
                if path.suffix != ".deb" and path != self.root / "root":
                    files[str(path.relative_to(self.root))] = (
                        facts.st_uid, facts.st_mode, facts.st_mtime_ns if path.is_file() else 0,
                        hashlib.sha256(content).hexdigest())
        return files

    def spoiled(self):
        """Those that the program has changed more than it may."""
        def is_kept(path, rule):
            now = (self.root / path).read_bytes()
            first = self.first[path]
            return rule == REWRITES or now == first or rule == APPENDS and now.startswith(first)
        return [path for path, rule in OWN_FILES.items() if not is_kept(path, rule)]
