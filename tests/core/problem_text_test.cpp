#include "core/problem_text.h"

#include <gtest/gtest.h>

#include "files/logs.h"

namespace {

// Messages as the program logs them, and what is made of the part of each that differs.
TEST(ProblemText, NamesThePartOfTheProgramAndWhatIsSpecial) {
  constexpr const char* kCases[][3] = {
      {"Server.ini [x]: cannot be read: the file is torn", "设置", "无法读取：内容有缺损。"},
      {"Server.ini [FtpServer Options] Port: cannot convert \"$1\"", "FTP 服务", " Port 的值“$1”"},
      {"Server.ini [A] Key: cannot convert \"\"", "设置", "的 [A] 中，Key 的值“”无法使用"},
      {"Settings not saved: Permission denied", "设置", "没有改动：没有权限。"},
      {"startflg.dat: cannot be written: Is a directory", "设置", "那里是一个文件夹，不是文件。"},
      {"Window toolkit: a.cpp:1: F: assertion failed: x > 0: ", "窗口", "没有通过：x > 0: "},
      {"Window toolkit: no picture", "窗口", "不受影响：no picture"},
      {"IndexFN.Log: File too large", "Web 服务", "无法读取：文件太大。"},
      {"TempFileIn: No space left on device", "Web 服务", "没有交给 CGI 程序：磁盘已满。"},
      {"C:\\w\\cgi-bin\\a.exe: Access is denied.", "Web 服务", "程序 a.exe 没有运行：没有权限。"},
      {"Search\\a.htm: News.", "Web 服务", "网页 a.htm 没有复制到 Search 文件夹：News。"},
      {"\\m\\User\\li: cannot be written: x", "E-Mail 服务", "文件夹 \\m\\User\\li 无法写入：x。"},
      {"\\m\\User\\li\\M_1.eml: x", "E-Mail 服务", "邮件 \\m\\User\\li\\M_1.eml 无法读写：x。"},
      {"\\m\\User\\li\\a: Directory not empty", "E-Mail 服务",
       "li\\a 无法读写或删除：文件夹里还有"},
      {"\\t\\unpack.lst: 3 lines name no message", "E-Mail 服务", "有 3 行"},
      {"\\etc\\hosts: x", "其他", "hosts 文件无法读取：x。"},
      {"Address already in use", "其他", "一项服务没有启动：它的端口已被另一个程序占用。"},
      {"accept: Too many open files", "其他", "accept：同时打开的文件和连接太多。"},
      {"cgi-bin: something new", "其他", "cgi-bin: something new"},
  };
  for (const auto& [message, what, special] : kCases) {
    const std::string line = files::ErrorLog::Line(message, {});
    const core::Problem problem = core::Explain(line);
    EXPECT_EQ(problem.what, what) << message;
    EXPECT_NE(problem.explanation.find(special), std::string::npos) << problem.explanation;
    EXPECT_EQ("在 " + problem.time + "捕获错误: " + message, problem.line);
  }
}

TEST(ProblemText, ShowsForeignLinesHarmlesslyAndShortly) {
  for (const std::string begin : {"在 2026-11-15 14:30:44捕获错误: ", "在 2026-11-15 14", ""}) {
    const core::Problem problem =
        core::Explain(begin + "\x1b[2J \u202e" + std::string(5 << 20, '$'));
    EXPECT_EQ(problem.line.substr(0, begin.size() + 8), begin + "?[2J ?$$");
    EXPECT_LT(problem.line.size() + problem.explanation.size(), 7000U);
  }
}

}  // namespace
