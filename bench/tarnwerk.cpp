#include "bench/tarnwerk.h"

#include <map>

#include "bench/failure.h"

namespace bench {

Tarnwerk::Tarnwerk(const std::string& program, const Folder& folder, const Options& options)
    : Server(options.name), folder_(folder) {
  folder.Write("mailroot/User/box/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n");
  folder.Write("Server.ini",
               "[WebServer Options]\r\nDNS=localhost\r\nStartDefaultPage=1\r\nRead=1\r\n"
               "optAppDone=True\r\nWebRootDir=" +
                   folder.Path("wwwroot") + "\r\nTCPPort=" + std::to_string(WebPort()) + "\r\n" +
                   options.webKeys + "[FtpServer Options]\r\nDNS=localhost\r\nFtpServer Root=" +
                   folder.Path("ftproot") +
                   // Without an upload folder every path could be changed, and some clients try.
                   "\r\nFtpServer UploadDir=" + folder.Path("ftproot") +
                   "\r\nFtpPort=" + std::to_string(ftpPort_) +
                   "\r\n[MailServer Options]\r\nDNS=localhost\r\nMailServer Root=" +
                   folder.Path("mailroot") + "\r\nSMTP Port=" + std::to_string(smtpPort_) +
                   "\r\nPOP3 Port=" + std::to_string(pop3Port_) + "\r\n");
  std::map<std::string, std::string> environment = {{"TARNWERK_HOME", folder.Path()},
                                                    {"TARNWERK_HOSTS", folder.Path("hosts")},
                                                    {"XDG_RUNTIME_DIR", folder.Path()},
                                                    {"XDG_CONFIG_HOME", folder.Path()},
                                                    {"XDG_STATE_HOME", folder.Path()}};
  if (options.display == Display::kNone) {
    environment.insert({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}});
  }
  // "SHOW" would send the window to the tray.
  Run({program, "START"}, environment);
  for (const std::uint16_t port : {ftpPort_, smtpPort_, pop3Port_}) {
    Expect(WaitForPort(port) >= 0, "the program does not serve");
  }
}

std::string Tarnwerk::Message(int number) const {
  return folder_.Path("mailroot/User/box/Message_" + std::to_string(number) + ".eml");
}

}  // namespace bench
