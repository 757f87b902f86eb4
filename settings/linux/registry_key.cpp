#include "settings/registry_key.h"

#include <charconv>

#include "settings/linux/state_file.h"
#include "settings/registry.h"

namespace Modreg {
namespace {

std::string SectionOf(Root root, std::string_view subkey) {
  const std::string name = RootName(root);
  return subkey.empty() ? name : name + "\\" + std::string(subkey);
}

}  // namespace

struct Key::System {
  std::string section;  // empty while the key is not open
  settings::StateFile file{"registry.ini"};
};

Key::Key() : system_(std::make_unique<System>()) {}
Key::~Key() = default;
Key::Key(Key&&) noexcept = default;
Key& Key::operator=(Key&&) noexcept = default;

Key Key::Create(Root root, std::string_view subkey, std::error_code& error) {
  Key key;
  const std::string section = SectionOf(root, subkey);
  error = key.system_->file.AddSection(section);
  if (!error) key.system_->section = section;
  return key;
}

Key Key::Open(Root root, std::string_view subkey, std::error_code& error) {
  Key key;
  const std::string section = SectionOf(root, subkey);
  error.clear();
  // The roots are always there.
  const bool exists = subkey.empty() || key.system_->file.HasSection(section, error);
  if (!error && !exists) error = std::make_error_code(std::errc::no_such_file_or_directory);
  if (!error) key.system_->section = section;
  return key;
}

void Key::Close() { system_->section.clear(); }

std::string Key::QueryText(std::string_view name, std::error_code& error) const {
  error = std::make_error_code(std::errc::bad_file_descriptor);
  if (system_->section.empty()) return {};
  const auto value = system_->file.Find(system_->section, name, error);
  if (!error && !value) error = std::make_error_code(std::errc::no_such_file_or_directory);
  return value ? value->substr(0, value->find('\0')) : std::string();
}

void Key::SetText(std::string_view name, std::string_view value, std::error_code& error) {
  error = std::make_error_code(std::errc::bad_file_descriptor);
  if (!system_->section.empty()) error = system_->file.Set(system_->section, name, value);
}

std::int32_t Key::QueryNumber(std::string_view name, std::error_code& error) const {
  const std::string text = QueryText(name, error);
  if (error) return 0;
  std::int32_t value = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec == std::errc() && result.ptr == end) return value;
  error = std::make_error_code(std::errc::invalid_argument);
  return 0;
}

void Key::SetNumber(std::string_view name, std::int32_t value, std::error_code& error) {
  SetText(name, std::to_string(value), error);
}

}  // namespace Modreg
