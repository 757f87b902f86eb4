#pragma once

// What a service's connections do. A snapshot of the open ones is made on demand from what they
// keep anyway. What each of them did is told to an observer when it ends; without one nothing is
// made for it.

#include <chrono>
#include <cstdint>
#include <string>

namespace net {

/// Bytes since the start of whatever is counted.
struct Traffic {
  std::uint64_t received = 0;
  std::uint64_t sent = 0;
};

/// What a connection does from one call of Connection::Doing to the next.
struct Activity {
  enum class Kind {
    kCommand,  // a request or command that is nothing of the following
    kDownload,
    kUpload,
    kBrowse,
    kProgram,
    kDelete,
    kRename,
    kMakeFolder,
    kRemoveFolder,
    kReceiveMail,
    kCollectMail,
    kSignIn,
  };

  Kind kind = Kind::kCommand;
  /// A command as it was sent, else what a user knows it by: the path of the file or folder as the
  /// client sees it, a file's without the leading "/", the users that a message is for, or the name
  /// of a sign-in. One printable line; empty before the first activity.
  std::string what = {};
  /// The file or folder on this machine, a path text. Empty if there is none, and while nobody
  /// observes.
  std::string path = {};
  std::string detail = {};  // of a message: its subject, as one printable line
  std::uint64_t total = 0;  // the bytes of a transfer whose size is known, else 0
  Traffic traffic = {};     // of this activity, unsent bytes included
  std::chrono::system_clock::time_point began = {};
};

/// How an activity ended.
enum class ActivityEnd {
  kComplete,
  kClientLeft,
  kEvicted,       // another client got the slot
  kDisconnected,  // by the user of this program
  kServiceStopped,
  kIdle,  // nothing came from the client for too long
  kNotFound,
  kRefused,  // the settings do not permit it, or the password is wrong
  kFailed,
};

/// An open connection.
struct ConnectionReport {
  std::string protocol;  // "HTTP", "FTP", "SMTP" or "POP3"
  int slot = 0;
  std::string address;  // the client's
  std::chrono::system_clock::time_point since;
  Activity activity;
};

/// What a connection did, with names as in ConnectionReport.
struct EndedActivity {
  std::string protocol;
  int slot = 0;
  std::string address;
  Activity activity;
  std::chrono::system_clock::time_point ended;
  ActivityEnd end = ActivityEnd::kComplete;
};

/// Gets the activities of a service as they end.
class ActivityObserver {
 public:
  virtual ~ActivityObserver() = default;

  /// Called on the loop, often in the middle of an exchange: it must not throw, send or close
  /// anything.
  virtual void OnActivityEnded(const EndedActivity& ended) = 0;
};

}  // namespace net
