#include "core/problem_text.h"

#include <gtest/gtest.h>

#include <asio/error.hpp>

#include "files/logs.h"
#include "platform/system_message.h"

namespace {

// Messages as the program logs them, and what is made of the part of each that differs.
TEST(ProblemText, NamesThePartOfTheProgramAndWhatIsSpecial) {
  constexpr const char* kCases[][3] = {
      {"Server.ini [x]: cannot be read: the file is torn", "设置", "无法读取：内容有缺损。"},
      {"Server.ini [FtpServer Options] Port: cannot convert \"$1\"", "FTP 服务", " Port 的值“$1”"},
      {"Server.ini [A] Key: cannot convert \"\"", "设置", "的 [A] 中，Key 的值“”无法使用"},
      {"Server.ini [WebServer Options] Speed: \"x\" is not from 0 to 32767", "设置",
       "Speed 的值“x”应为 0 到 32767 的数字"},
      {"Window toolkit: a.cpp:1: F: assertion failed: x > 0: ", "窗口", "没有通过：x > 0: "},
      {R"(C:\w\cgi-bin\a.exe: Access is denied.)", "Web 服务", "程序 a.exe 没有运行：没有权限。"},
      {R"(\m\User\li\M_1.eml: x)", "E-Mail 服务", R"(邮件 \m\User\li\M_1.eml 无法读写：x。)"},
      {"\\User\\a: Directory not empty", "E-Mail 服务", " a 无法读写或删除：文件夹里还有"},
      {"Address already in use", "其他", "一项服务没有启动：它的端口已被另一个程序占用。"},
      {"accept: Too many open files", "其他", "accept：同时打开的文件和连接太多。"},
      {"cgi-bin: something new", "其他", "cgi-bin: something new"},
  };
  for (const auto& [message, what, special] : kCases) {
    const core::Problem problem = core::Explain(files::ErrorLog::Line(message, {}));
    EXPECT_EQ(problem.what, what) << message;
    EXPECT_NE(problem.explanation.find(special), std::string::npos) << problem.explanation;
    EXPECT_EQ("在 " + problem.time + "捕获错误: " + message, problem.line);
  }
}

TEST(ProblemText, ShowsForeignLinesHarmlesslyAndShortly) {
  const std::string begin = "在 2026-11-15 14";
  const core::Problem problem = core::Explain(begin + "\x1b[2J \u202e" + std::string(5 << 20, '$'));
  EXPECT_EQ(problem.line.substr(0, begin.size() + 8), begin + "?[2J ?$$");
  EXPECT_LT(problem.line.size() + problem.explanation.size(), 7000U);
}

TEST(ProblemText, UnderstandsWhatThisSystemSaysOfATakenPort) {
  const std::error_code error = asio::error::make_error_code(asio::error::address_in_use);
  const std::string explanation = core::Explain(platform::SystemMessage(error)).explanation;
  EXPECT_NE(explanation.find("端口已被另一个程序占用"), std::string::npos) << explanation;
}

}  // namespace
