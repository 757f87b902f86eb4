#pragma once

// The requests: the bytes of one arrival in, the decision how to answer it out. One arrival is one
// request. Its first characters tell the method and the resource is cut by positions; no header is
// read but the length of a POST's body.
//
// The interpreter works without a socket and changes nothing but the session. It looks for default
// documents through its Site; carrying the decision out is up to the caller.

#include <string>
#include <string_view>

#include "core/command_table.h"
#include "net/connection_report.h"
#include "web/bare/web_session.h"
#include "web/web_options.h"

namespace ModWeb {

struct Decision {
  enum class Action {
    kNothing,       // the connection stays open
    kSendFile,      // nothing if it is missing
    kSendHtmlFile,  // the not-found page if it is missing
    kRunProgram,    // send the page of a program in cgi-bin
    kRefuseGet,     // send the not-found page and log the request
    kRefusePost,    // the same, but the log line follows pending events
  };

  Action action = Action::kNothing;
  std::string resource = {};  // a file below the Web root, or a program below its cgi-bin
  std::string body = {};      // bytes for the program's input
  std::string fault = {};     // why a request is not answered, for the error log
  // What the user sees the client doing (net::Activity); no text for no request.
  net::Activity::Kind kind = net::Activity::Kind::kCommand;
  std::string shown = {};
};

class RequestInterpreter {
 public:
  class Site {
   public:
    /// Whether the Web root has a readable file of this name.
    virtual bool HasFile(const std::string& name) const = 0;

   protected:
    ~Site() = default;
  };

  /// All arguments must outlive the interpreter.
  RequestInterpreter(const Site& site, const WebOptions& options, WebSession& session)
      : site_(site), options_(options), session_(session) {}

  Decision Interpret(std::string_view request);

 private:
  using Method = core::Command<RequestInterpreter, std::string_view, Decision>;

  static const Method* Find(std::string_view request);

  Decision ServeGetRequest(std::string_view request);
  Decision ServePostRequest(std::string_view request);
  std::string FindDefaultPage() const;

  const Site& site_;
  const WebOptions& options_;
  WebSession& session_;
};

}  // namespace ModWeb
