#pragma once

// Answers in the manner of HTTP/0.9: the bare content of a file or the page of a program, without
// status line or header; the end of the connection ends the answer.
//
// RequestInterpreter decides how a request is answered, and ResponseSender sends the answer. All
// connections share one session.

#include <memory>
#include <string>

#include "net/connection.h"
#include "net/task.h"
#include "web/bare/request_interpreter.h"
#include "web/bare/response_sender.h"
#include "web/bare/web_session.h"
#include "web/web_site.h"

namespace ModWeb {

class BareAnswers final : private RequestInterpreter::Site {
 public:
  using Client = std::shared_ptr<net::Connection>;

  /// Everything in `site` must outlive this object, which must outlive its tasks.
  explicit BareAnswers(const WebSite& site);

  /// Takes an arrival, which is a request, and answers it.
  net::Task<> OnWebDataArrival(Client client);

 private:
  void ShowRequest(net::Connection& client, Decision& decision) const;
  net::Task<> ServeHtmlFile(std::string resource, Client client);
  net::Task<> ServeProgram(std::string resource, std::string body, Client client);
  net::Task<> RefuseGet(Client client);
  net::Task<> RefusePost(Client client);

  bool HasFile(const std::string& name) const override;

  const WebSite site_;
  WebSession session_;
  RequestInterpreter interpreter_;
  ResponseSender sender_;
};

}  // namespace ModWeb
