#include "bench/ftp_peers.h"

#include <filesystem>
#include <string>

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

PureFtpd::PureFtpd(const Folder& folder) : Server(kName) {
  Run({"pure-ftpd", "--anonymousonly", "--dontresolve", "--bind",
       "127.0.0.1," + std::to_string(Port()), "--limitrecursion", "2000000:8", "--maxdiskusagepct",
       "100", "--pidfile", folder.Path("pure-ftpd.pid")},
      {{"FTP_ANON_DIR", folder.Path("ftproot")}});
}

Pyftpdlib::Pyftpdlib(const Folder& folder) : Server(kName) {
  Run({kPython, Script("pyftpdlib_server.py"), std::to_string(Port()), folder.Path("ftproot")});
}

void CreateUploadFolder(const Folder& folder) {
  fs::create_directories(folder.Path("ftproot/upload"));
  fs::permissions(folder.Path("ftproot/upload"), fs::perms::all);
}

}  // namespace bench
