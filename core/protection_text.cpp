#include "core/protection_text.h"

#include <array>
#include <cstddef>

namespace core {
namespace {

struct Part {
  bool isOn;
  const char* name;
};

std::array<Part, 4> PartsOf(const ProtectionOptions& options) {
  using Reach = ProtectionOptions::Reach;
  return {{{options.reach != Reach::kAll, options.reach == Reach::kLan ? "局域网" : "仅本机"},
           {options.confine, "只限主目录"},
           {options.signIn, "要求登录"},
           {options.honest, "如实答复"}}};
}

}  // namespace

std::string ProtectionText(const ProtectionOptions& options, std::uint64_t refusedClients) {
  std::size_t count = 0;
  for (const Part& part : PartsOf(options)) count += part.isOn ? 1 : 0;
  std::string text = "保护：";
  text += count == 0 ? "关" : count == PartsOf(options).size() ? "开" : "部分开启";
  if (refusedClients > 0) text += "，已拒绝 " + std::to_string(refusedClients) + " 次";
  return text;
}

std::string ProtectionParts(const ProtectionOptions& options) {
  std::string text;
  for (const Part& part : PartsOf(options)) {
    if (part.isOn) text += (text.empty() ? "" : "、") + std::string(part.name);
  }
  return text;
}

}  // namespace core
