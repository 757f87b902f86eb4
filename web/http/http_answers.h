#pragma once

// How a request is answered: the files of the site for GET and HEAD, with ranges and with what the
// client knows already; a list for a folder without a default page; the page of a program for POST.
// A name never leads out of the Web root, whatever the settings say.

#include <memory>
#include <string>

#include "net/connection.h"
#include "net/task.h"
#include "web/http/request_reader.h"
#include "web/http/request_target.h"
#include "web/http/response.h"
#include "web/web_site.h"

namespace ModWeb {

class HttpAnswers {
 public:
  using Client = std::shared_ptr<net::Connection>;

  /// Everything in `site` must outlive this object, which must outlive its tasks.
  explicit HttpAnswers(const WebSite& site) : site_(site) {}

  /// Begins the client's activity, and returns the answer. Nothing is sent. What takes longer than
  /// this call takes the request along.
  net::Task<HttpResponse> Answer(HttpRequest&& request, const Client& client);

  /// The answer to what is no request.
  static net::Task<HttpResponse> Refuse(int status, net::Connection& client);

 private:
  net::Task<HttpResponse> Get(HttpRequest&& request, RequestTarget&& target, const Client& client);
  net::Task<HttpResponse> Post(HttpRequest request, RequestTarget target, Client client);
  net::Task<HttpResponse> ShowFolder(HttpRequest request, std::string name, RequestTarget target,
                                     Client client);

  HttpResponse SendFile(const HttpRequest& request, const std::string& resource,
                        platform::File file) const;
  bool IsShown(const std::string& path) const;
  HttpResponse ProgramPage(platform::File page) const;
  HttpResponse Forbidden(const HttpRequest& request, const RequestTarget& target,
                         const net::Connection& client) const;
  void Begin(net::Connection& client, net::Activity::Kind kind, std::string shown,
             const std::string& path) const;

  const WebSite site_;
};

}  // namespace ModWeb
