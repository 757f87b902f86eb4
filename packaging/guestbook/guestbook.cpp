// The guest book of the sample site, and an example of a CGI program for this server:
//
//   guestbook.cgi <input file> <output file>
//
// The input file contains the decoded form: name=...&message=... and a line end. The program
// appends the entry to guestbook.txt beside the input file and writes a page with all entries to
// the output file, which the server sends and deletes.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "platform/program_location.h"

namespace {

std::filesystem::path PathOf(const std::string& text) {
  return std::u8string(text.begin(), text.end());
}

// On Windows the server does not quote names but puts two blanks before each. If the folder's name
// contains a blank, the arguments are therefore split wrongly, and they lack characters outside the
// system's code page. The whole command line has neither problem.
std::vector<std::filesystem::path> FileNames(int argumentCount, char** arguments) {
  std::vector<std::filesystem::path> names(arguments + 1, arguments + argumentCount);
  if (names.size() >= 2 && std::filesystem::exists(names[0])) return names;
  const std::string line = ' ' + platform::CommandLineText(argumentCount, arguments);
  const std::size_t output = line.rfind("  ");
  const std::size_t input = output == line.npos ? line.npos : line.rfind("  ", output - 1);
  if (input == line.npos) return {};
  return {PathOf(line.substr(input + 2, output - input - 2)), PathOf(line.substr(output + 2))};
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The text between `name` and `next`. Not split at "&": the server has decoded the form, so a field
// may contain one.
std::string FieldUpTo(std::string_view form, std::string_view name, std::string_view next) {
  const std::size_t begin = form.find(name);
  if (begin == form.npos) return {};
  const std::string_view rest = form.substr(begin + name.size());
  return std::string(rest.substr(0, rest.find(next)));
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

void AddEntry(const std::filesystem::path& book, std::string_view form) {
  const std::string name = FieldUpTo(form, "name=", "&message=");
  const std::string message = FieldUpTo(form, "&message=", "\r\n");
  if (name.empty() || message.empty()) return;
  std::ofstream(book, std::ios::binary | std::ios::app)
      << "<li><strong>" << Escaped(name) << "</strong>：" << Escaped(message) << "</li>\n";
}

std::string Page(const std::string& entries) {
  return "<!DOCTYPE html>\n<html lang=\"zh-CN\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<title>留言簿 - 山下人家</title>\n<link rel=\"stylesheet\" href=\"/style.css\">\n"
         "</head>\n<body>\n<h1>留言簿</h1>\n<ul id=\"entries\">\n" +
         entries + "</ul>\n<p><a href=\"/index.htm\">回到首页</a></p>\n</body>\n</html>\n";
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const auto files = FileNames(argumentCount, arguments);
  if (files.size() < 2) return 2;
  const std::filesystem::path book = files[0].parent_path() / "guestbook.txt";
  AddEntry(book, ReadFile(files[0]));
  std::ofstream page(files[1], std::ios::binary);
  page << Page(ReadFile(book));
  return page.flush() ? 0 : 1;
}
