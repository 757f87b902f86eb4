#pragma once

// Sends what a POP3 command is answered with, a stored message piece by piece.

#include <memory>

#include "files/logs.h"
#include "mail/pop3_interpreter.h"
#include "net/connection.h"
#include "net/task.h"

namespace ModMail {

/// Ends when everything has been handed to `client`. Nothing more is read from a client that a long
/// message is being sent to. Closes the connection and throws net::HandlerEnded if the message
/// cannot be read to its end once its beginning has been sent; `errors` then has the reason.
net::Task<> SendOutcome(std::shared_ptr<net::Connection> client, Pop3Outcome outcome,
                        const files::ErrorLog& errors);

}  // namespace ModMail
