#include "bench/process_tree.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <vector>

namespace bench {
namespace {

// The fields of /proc/<process>/stat behind the name; empty if the process has ended.
std::vector<std::string> StatFields(pid_t process) {
  std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  std::getline(stat, line);
  const std::size_t name = line.rfind(')');
  if (name == std::string::npos) return {};
  std::istringstream fields(line.substr(name + 1));
  return {std::istream_iterator<std::string>(fields), {}};
}

constexpr std::size_t kParent = 1;
constexpr std::size_t kUserTime = 11;
constexpr std::size_t kTimes = 4;  // user, system, and both of the children waited for

std::multimap<pid_t, pid_t> ChildrenOfAll() {
  std::multimap<pid_t, pid_t> children;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename();
    if (!std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isdigit(c); })) {
      continue;
    }
    const pid_t process = std::stoi(name);
    const std::vector<std::string> fields = StatFields(process);
    if (fields.size() > kParent) children.emplace(std::stoi(fields[kParent]), process);
  }
  return children;
}

std::vector<pid_t> Tree(pid_t root) {
  const std::multimap<pid_t, pid_t> children = ChildrenOfAll();
  std::vector<pid_t> tree = {root};
  for (std::size_t i = 0; i < tree.size(); ++i) {
    const auto [first, last] = children.equal_range(tree[i]);
    for (auto child = first; child != last; ++child) tree.push_back(child->second);
  }
  return tree;
}

bool IgnoresChildren(pid_t process) {
  return (StatusNumber(process, "SigIgn", 16) >> (SIGCHLD - 1) & 1) != 0;
}

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

Usage UsageOfTree(pid_t root) {
  Usage usage;
  for (const pid_t process : Tree(root)) {
    usage.processorSeconds +=
        static_cast<double>(ProcessorTicks(process)) / static_cast<double>(sysconf(_SC_CLK_TCK));
    usage.countsEndedChildren = usage.countsEndedChildren && !IgnoresChildren(process);
    usage.resident += StatusNumber(process, "VmRSS");
    usage.anonymous += StatusNumber(process, "RssAnon");
  }
  return usage;
}

std::size_t CountOfTree(pid_t root) { return Tree(root).size(); }

void AdoptOrphans() { prctl(PR_SET_CHILD_SUBREAPER, 1); }

double SecondsOfOrphans() {
  double seconds = 0;
  rusage used = {};
  while (wait4(-1, nullptr, WNOHANG, &used) > 0) {
    seconds += Seconds(used.ru_utime) + Seconds(used.ru_stime);
  }
  return seconds;
}

std::uint64_t ProcessorTicks(pid_t process) {
  const std::vector<std::string> fields = StatFields(process);
  if (fields.size() < kUserTime + kTimes) return 0;
  std::uint64_t ticks = 0;
  for (std::size_t i = 0; i < kTimes; ++i) ticks += std::stoull(fields[kUserTime + i]);
  return ticks;
}

std::string StatusLine(pid_t process, const std::string& name) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name + ":")) return line.substr(name.size() + 1);
  }
  return {};
}

std::uint64_t StatusNumber(pid_t process, const std::string& name, int base) {
  return std::strtoull(StatusLine(process, name).c_str(), nullptr, base);
}

}  // namespace bench
