#include <filesystem>
#include <sstream>

#include "mail/mail_options.h"
#include "mail/mailbox_store.h"
#include "mail/pop3_interpreter.h"
#include "mail/smtp_interpreter.h"
#include "platform/native_path.h"
#include "settings/program.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

namespace fs = std::filesystem;

// A program directory and a mail root with one mailbox.
struct Home {
  Home() {
    fs::remove_all(path);
    fs::create_directories(path / "mailroot/User/bob");
    options.mailRoot = platform::PathText(path / "mailroot");
  }

  // Only messages and logs may have appeared, and the mailbox must still be there.
  void RequireOrderAndEmpty() const {
    fuzz::Require(fs::is_directory(path / "mailroot/User/bob"));
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
      const std::string name = entry.path().lexically_relative(path).generic_string();
      const bool isMessage = name.starts_with("mailroot/User/") && name.ends_with(".eml");
      const bool isLog = name.ends_with(".Log") || name.ends_with(".log");
      const bool isFolder =
          entry.is_directory() && std::string("mailroot/User/bob").starts_with(name);
      fuzz::Require(isFolder || isMessage || (isLog && name.find('/') == std::string::npos));
      if (!isFolder) fs::remove(entry.path());
    }
  }

  const fs::path path = fs::temp_directory_path() / "tarnwerk-fuzz";
  const settings::Program program{platform::PathText(path), "Tarnwerk"};
  ModMail::MailOptions options;
};

// Faults are thrown.
template <class Interpreter, class... Session>
void Play(Interpreter& interpreter, const std::string& arrival, Session&... session) {
  try {
    interpreter.Interpret(arrival, session...);
  } catch (const std::exception&) {
    return;
  }
}

}  // namespace

// Plays arrivals, separated by zero bytes, to both protocols. No name leads out of the mailboxes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Home home;
  const core::Protection protection(home.program);
  ModMail::MailboxStore store(home.program, home.options);
  ModMail::SmtpInterpreter smtp(store, protection);
  ModMail::Pop3Interpreter pop3(store, protection);
  ModMail::Pop3Session session;
  std::istringstream arrivals(std::string(fuzz::Text(data, size)));
  for (std::string arrival; std::getline(arrivals, arrival, '\0');) {
    Play(smtp, arrival);
    Play(pop3, arrival, session);
  }
  home.RequireOrderAndEmpty();
  return 0;
}
