#include "settings/registry_key.h"

#include "platform/windows/registry.h"

namespace Modreg {

struct Key::System {
  platform::RegistryKey key;
};

Key::Key() : system_(std::make_unique<System>()) {}
Key::~Key() = default;
Key::Key(Key&&) noexcept = default;
Key& Key::operator=(Key&&) noexcept = default;

Key Key::Create(Root root, std::string_view subkey, std::error_code& error) {
  Key key;
  key.system_->key = platform::RegistryKey::Create(static_cast<std::uint32_t>(root), subkey, error);
  return key;
}

Key Key::Open(Root root, std::string_view subkey, std::error_code& error) {
  Key key;
  key.system_->key = platform::RegistryKey::Open(static_cast<std::uint32_t>(root), subkey, error);
  return key;
}

void Key::Close() { system_->key.Close(); }

std::string Key::QueryText(std::string_view name, std::error_code& error) const {
  return system_->key.QueryText(name, error);
}

void Key::SetText(std::string_view name, std::string_view value, std::error_code& error) {
  system_->key.SetText(name, value, error);
}

std::int32_t Key::QueryNumber(std::string_view name, std::error_code& error) const {
  return system_->key.QueryNumber(name, error);
}

void Key::SetNumber(std::string_view name, std::int32_t value, std::error_code& error) {
  system_->key.SetNumber(name, value, error);
}

}  // namespace Modreg
