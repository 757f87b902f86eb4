#include "bench/web_peers.h"

#include <string>

namespace bench {

Nginx::Nginx(const Folder& folder) : Server(kName) {
  folder.Write("nginx.conf",
               "daemon off; worker_processes 1; pid nginx.pid; error_log /dev/null;\n"
               "user root;\n"
               "events { worker_connections 1024; }\n"
               "http { access_log off; sendfile on; tcp_nopush on; keepalive_requests 1000000;\n"
               "  server { listen 127.0.0.1:" +
                   std::to_string(Port()) + " backlog=4096; root " + folder.Path("wwwroot") +
                   "; } }\n");
  Run({"nginx", "-p", folder.Path(), "-c", folder.Path("nginx.conf")});
}

Lighttpd::Lighttpd(const Folder& folder) : Server(kName) {
  folder.Write("lighttpd.conf",
               "server.bind = \"127.0.0.1\"\nserver.port = " + std::to_string(Port()) +
                   "\nserver.document-root = \"" + folder.Path("wwwroot") +
                   "\"\nserver.errorlog = \"/dev/null\"\n"
                   "server.max-keep-alive-requests = 60000\n");
  Run({"lighttpd", "-D", "-f", folder.Path("lighttpd.conf")});
}

BusyboxHttpd::BusyboxHttpd(const Folder& folder) : Server(kName) {
  Run({"busybox", "httpd", "-f", "-p", "127.0.0.1:" + std::to_string(Port()), "-h",
       folder.Path("wwwroot")});
}

}  // namespace bench
