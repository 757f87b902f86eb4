#include "platform/registry.h"

#include <charconv>

#include "platform/linux/state_file.h"

namespace platform {
namespace {

std::string SectionOf(RegistryRoot root, std::string_view subkey) {
  const std::string name(NameOf(root));
  return subkey.empty() ? name : name + "\\" + std::string(subkey);
}

}  // namespace

struct RegistryKey::System {
  std::string section;
  StateFile file{"registry.ini"};
};

RegistryKey::RegistryKey() = default;
RegistryKey::RegistryKey(std::unique_ptr<System> system) : system_(std::move(system)) {}
RegistryKey::~RegistryKey() = default;
RegistryKey::RegistryKey(RegistryKey&&) noexcept = default;
RegistryKey& RegistryKey::operator=(RegistryKey&&) noexcept = default;

RegistryKey RegistryKey::Create(RegistryRoot root, std::string_view subkey,
                                std::error_code& error) {
  RegistryKey key(std::make_unique<System>());
  key.system_->section = SectionOf(root, subkey);
  key.system_->file.AddSection(key.system_->section, error);
  return error ? RegistryKey() : std::move(key);
}

RegistryKey RegistryKey::Open(RegistryRoot root, std::string_view subkey, std::error_code& error) {
  RegistryKey key(std::make_unique<System>());
  key.system_->section = SectionOf(root, subkey);
  error.clear();
  if (subkey.empty()) return key;  // the roots always exist
  const bool exists = key.system_->file.HasSection(key.system_->section, error);
  if (!error && !exists) error = std::make_error_code(std::errc::no_such_file_or_directory);
  return error ? RegistryKey() : std::move(key);
}

void RegistryKey::Close() { system_.reset(); }

std::string RegistryKey::QueryText(std::string_view name, std::error_code& error) const {
  error = std::make_error_code(std::errc::bad_file_descriptor);
  if (!system_) return {};
  const auto value = system_->file.Find(system_->section, name, error);
  if (!error && !value) error = std::make_error_code(std::errc::no_such_file_or_directory);
  return value.value_or("").substr(0, value.value_or("").find('\0'));
}

void RegistryKey::SetText(std::string_view name, std::string_view value, std::error_code& error) {
  error = std::make_error_code(std::errc::bad_file_descriptor);
  if (!system_) return;
  system_->file.Set(system_->section, name, value.substr(0, value.find('\0')), error);
}

std::int32_t RegistryKey::QueryNumber(std::string_view name, std::error_code& error) const {
  const std::string text = QueryText(name, error);
  if (error) return 0;
  std::int32_t value = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec == std::errc() && result.ptr == end) return value;
  error = std::make_error_code(std::errc::invalid_argument);
  return 0;
}

void RegistryKey::SetNumber(std::string_view name, std::int32_t value, std::error_code& error) {
  SetText(name, std::to_string(value), error);
}

}  // namespace platform
