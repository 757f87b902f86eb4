#include "bench/ftp_peers.h"

#include <crypt.h>
#include <pwd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/failure.h"
#include "bench/ftp_client.h"

namespace bench {

namespace fs = std::filesystem;

Vsftpd::Vsftpd(const Folder& folder) : Server(kName) {
  fs::create_directories(folder.Path("empty"));
  folder.Write("vsftpd.conf",
               "listen=YES\nlisten_ipv6=NO\nbackground=NO\nlisten_address=127.0.0.1\n"
               "anonymous_enable=YES\nlocal_enable=NO\nno_anon_password=YES\nseccomp_sandbox=NO\n"
               "write_enable=YES\nanon_upload_enable=YES\nsecure_chroot_dir=" +
                   folder.Path("empty") + "\nlisten_port=" + std::to_string(Port()) +
                   "\nanon_root=" + folder.Path("ftproot") + "\n");
  Run({"vsftpd", folder.Path("vsftpd.conf")});
}

// Its guests are sent to the home of the system's user "ftp", so the guest is a user in its own
// database instead. Its own hash of a password would take seconds.
PureFtpd::PureFtpd(const Folder& folder) : Server(kName) {
  const passwd* nobody = getpwnam("nobody");
  const std::string users = folder.Path("pure-ftpd.passwd");
  const std::string database = folder.Path("pure-ftpd.pdb");
  folder.Write("pure-ftpd.passwd", std::string(kGuest) + ":" + crypt(kGuestPassword, "$1$bench$") +
                                       ":" + std::to_string(nobody->pw_uid) + ":" +
                                       std::to_string(nobody->pw_gid) +
                                       "::" + folder.Path("ftproot") + "/./::::::::::::\n");
  const std::string make = "pure-pw mkdb " + database + " -f " + users;
  Expect(std::system(make.c_str()) == 0, "pure-ftpd does not take a user");
  Run({"pure-ftpd", "--noanonymous", "--login", "puredb:" + database, "--minuid", "1",
       "--dontresolve", "--bind", "127.0.0.1," + std::to_string(Port()), "--limitrecursion",
       "2000000:8", "--maxdiskusagepct", "100", "--pidfile", folder.Path("pure-ftpd.pid")});
}

Pyftpdlib::Pyftpdlib(const Folder& folder) : Server(kName) {
  Run({kPython, Script("pyftpdlib_server.py"), std::to_string(Port()), folder.Path("ftproot")});
}

void CreateUploadFolder(const Folder& folder) {
  fs::create_directories(folder.Path("ftproot/upload"));
  fs::permissions(folder.Path("ftproot/upload"), fs::perms::all);
}

}  // namespace bench
