#include "core/start_diagnosis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <asio/io_context.hpp>

#include "platform/acceptor.h"

namespace {

using core::Diagnosis;
using core::ServiceKind;
using testing::HasSubstr;

// The real error of a real second listener, and the program that is found to have the port.
TEST(StartDiagnosis, NamesTheProgramThatHasThePort) {
  asio::io_context context;
  platform::Acceptor first(context.get_executor());
  platform::Acceptor second(context.get_executor());
  asio::error_code error;
  first.Open(0, platform::ReceiveWindow::kFixed, error);
  ASSERT_FALSE(error);
  second.Open(first.Port(), platform::ReceiveWindow::kFixed, error);
  EXPECT_THAT(core::Explain(ServiceKind::kFtp, {error, 80}, {}, {}).text, HasSubstr("另一个程序"));
  const auto owner = platform::WhoListensOn(first.Port());
#ifdef _WIN32
  if (!owner) GTEST_SKIP() << "Wine does not always know whose a socket is";
#endif
  ASSERT_TRUE(owner);
  const Diagnosis diagnosis = core::Explain(ServiceKind::kFtp, {error, 80}, {owner, ""}, {});
  EXPECT_THAT(diagnosis.text, testing::ContainsRegex("端口 80 已被“.*core_test.*”占用"));
  EXPECT_THAT(diagnosis.text, HasSubstr(std::to_string(owner->process)));
  EXPECT_EQ(diagnosis.remedy, Diagnosis::Remedy::kChangePort);
  // Browsers show pages on port 80 only, so the Web server is not led away from it, but to HTTP.
  const Diagnosis web = core::Explain(ServiceKind::kWeb, {error, 80}, {owner, ""}, {});
  EXPECT_EQ(web.remedy, Diagnosis::Remedy::kRetry);
  EXPECT_THAT(web.text, HasSubstr("请先退出那个程序，然后再试一次"));
  EXPECT_THAT(web.text, HasSubstr(core::kForBrowsers));
  EXPECT_THAT(core::Explain(ServiceKind::kWeb, {error, 8080}, {owner, ""}, {}).text,
              HasSubstr("改用端口 80"));
  const Diagnosis http = core::Explain(ServiceKind::kWeb, {error, 80}, {owner, ""}, {"", true});
  EXPECT_EQ(http.text + http.brief, diagnosis.text + diagnosis.brief) << "as of any other service";
  first.Close();
  EXPECT_FALSE(platform::WhoListensOn(first.Port()));
}

TEST(StartDiagnosis, TellsTheOtherReasonsApart) {
  const auto explain = [](std::errc reason, std::int16_t port) {
    return core::Explain(ServiceKind::kWeb, {std::make_error_code(reason), port}, {},
                         {.executable = "/opt/my 'own'/t"});
  };
  for (const std::int16_t port : {0, -5}) {
    const Diagnosis invalid = explain(std::errc::invalid_argument, port);
    EXPECT_THAT(invalid.text, HasSubstr("不是 1 到 32767 的数字"));
    EXPECT_EQ(invalid.remedy, Diagnosis::Remedy::kChangePort);
  }
  const Diagnosis other = explain(std::errc::address_not_available, 8080);
  EXPECT_THAT(other.text, HasSubstr("端口 8080 无法使用"));
  EXPECT_EQ(other.remedy, Diagnosis::Remedy::kRetry);
#ifndef _WIN32
  const Diagnosis forbidden = explain(std::errc::permission_denied, 80);
  EXPECT_THAT(forbidden.text, testing::Not(HasSubstr("改用")));
  EXPECT_EQ(forbidden.command, "sudo setcap cap_net_bind_service=+ep '/opt/my '\\''own'\\''/t'");
#endif
}

}  // namespace
