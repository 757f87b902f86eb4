#include "core/start_diagnosis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <asio/io_context.hpp>

#include "platform/acceptor.h"

namespace {

using core::Diagnosis;
using testing::HasSubstr;

// The real error of a real second listener, and the program that is found to have the port.
TEST(StartDiagnosis, NamesTheProgramThatHasThePort) {
  asio::io_context context;
  platform::Acceptor first(context.get_executor());
  platform::Acceptor second(context.get_executor());
  asio::error_code error;
  first.Open(0, error);
  ASSERT_FALSE(error);
  second.Open(first.Port(), error);
  EXPECT_THAT(core::Explain({error, 80}, {}, "").text, HasSubstr("另一个程序"));
  const auto owner = platform::WhoListensOn(first.Port());
#ifdef _WIN32
  if (!owner) GTEST_SKIP() << "Wine does not always know whose a socket is";
#endif
  ASSERT_TRUE(owner);
  const Diagnosis diagnosis = core::Explain({error, 80}, {owner, ""}, "/opt/tarnwerk");
  EXPECT_THAT(diagnosis.text, testing::ContainsRegex("端口 80 已被“.*core_test.*”占用"));
  EXPECT_THAT(diagnosis.text, HasSubstr(std::to_string(owner->process)));
  EXPECT_EQ(diagnosis.remedy, Diagnosis::Remedy::kChangeOptions);
  first.Close();
  EXPECT_FALSE(platform::WhoListensOn(first.Port()));
}

TEST(StartDiagnosis, TellsTheOtherReasonsApart) {
  const auto explain = [](std::errc reason, std::int16_t port) {
    return core::Explain({std::make_error_code(reason), port}, {}, "/opt/my 'own'/t");
  };
  EXPECT_THAT(explain(std::errc::invalid_argument, 0).text, HasSubstr("不是 1 到 32767 的数字"));
  const Diagnosis other = explain(std::errc::address_not_available, 8080);
  EXPECT_THAT(other.text, HasSubstr("端口 8080 无法使用"));
  EXPECT_EQ(other.remedy, Diagnosis::Remedy::kNone);
#ifndef _WIN32
  EXPECT_EQ(explain(std::errc::permission_denied, 80).command,
            "sudo setcap cap_net_bind_service=+ep '/opt/my '\\''own'\\''/t'");
#endif
}

}  // namespace
