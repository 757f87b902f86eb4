#include <filesystem>

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
class Home {
 public:
  Home() : path_(fs::temp_directory_path() / "tarnwerk-fuzz") {
    fs::remove_all(path_);
    fs::create_directories(path_ / "mailroot/User/bob");
    program_.emplace(platform::PathText(path_), "Tarnwerk");
    options_.mailRoot = platform::PathText(path_ / "mailroot");
  }

  const settings::Program& Program() const { return *program_; }
  const ModMail::MailOptions& Options() const { return options_; }

  // Only messages and logs may appear, and the mailbox must stay.
  void RequireOrder() const {
    for (const auto& entry : fs::directory_iterator(path_)) {
      const std::string name = entry.path().filename().string();
      fuzz::Require(name == "mailroot" || name.ends_with(".Log") || name.ends_with(".log"));
    }
    fuzz::Require(fs::is_directory(path_ / "mailroot/User/bob"));
    fuzz::Require(std::distance(fs::directory_iterator(path_ / "mailroot"), {}) == 1);
    for (const auto& entry : fs::directory_iterator(path_ / "mailroot/User")) {
      fuzz::Require(entry.path().filename() == "bob" || entry.path().extension() == ".eml");
    }
  }

  void Empty() const {
    for (const auto& entry : fs::recursive_directory_iterator(path_)) {
      if (entry.is_regular_file()) fs::remove(entry.path());
    }
  }

 private:
  fs::path path_;
  std::optional<settings::Program> program_;
  ModMail::MailOptions options_;
};

}  // namespace

// Plays arrivals, separated by zero bytes, to both protocols in turn. Faults are thrown, and no
// name leads out of the mailboxes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Home home;
  ModMail::MailboxStore store(home.Program(), home.Options());
  ModMail::SmtpInterpreter smtp(store);
  ModMail::Pop3Interpreter pop3(store);
  std::string_view rest = fuzz::Text(data, size);
  bool isMail = true;
  while (!rest.empty()) {
    const std::string_view arrival = rest.substr(0, rest.find('\0'));
    rest.remove_prefix(std::min(rest.size(), arrival.size() + 1));
    try {
      if (isMail) {
        smtp.Interpret(std::string(arrival));
      } else {
        pop3.Interpret(arrival);
      }
    } catch (const std::exception&) {
      isMail = !isMail;
    }
    if (arrival.size() % 3 == 0) isMail = !isMail;
  }
  home.RequireOrder();
  home.Empty();
  return 0;
}
