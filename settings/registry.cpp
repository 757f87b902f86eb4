#include "settings/registry.h"

#include "platform/system_message.h"
#include "platform/text_case.h"

namespace Modreg {
namespace {

void RaiseIf(const std::error_code& error) {
  if (error) throw Error(error);
}

// The system would take the name to end there, and so another key.
void RaiseAtNul(std::string_view name) {
  if (name.find('\0') == std::string_view::npos) return;
  throw Error(std::make_error_code(std::errc::invalid_argument));
}

Key OpenPath(std::string_view path) {
  const std::size_t separator = path.find('\\');
  const auto root = RootByName(path.substr(0, separator));
  if (!root) throw Error(std::make_error_code(std::errc::invalid_argument));
  return OpenKey(*root, separator == std::string_view::npos ? "" : path.substr(separator + 1));
}

}  // namespace

Error::Error(const std::error_code& code)
    : std::system_error(code), message_(platform::SystemMessage(code)) {}

Key CreateKey(Root root, std::string_view subkey) {
  RaiseAtNul(subkey);
  std::error_code error;
  Key key = Key::Create(root, subkey, error);
  RaiseIf(error);
  return key;
}

Key OpenKey(Root root, std::string_view subkey) {
  RaiseAtNul(subkey);
  std::error_code error;
  Key key = Key::Open(root, subkey, error);
  RaiseIf(error);
  return key;
}

void CloseKey(Key& key) { key.Close(); }

std::string QueryText(const Key& key, std::string_view name) {
  RaiseAtNul(name);
  std::error_code error;
  std::string value = key.QueryText(name, error);
  RaiseIf(error);
  return value;
}

void SetText(Key& key, std::string_view name, std::string_view value) {
  RaiseAtNul(name);
  std::error_code error;
  key.SetText(name, value, error);
  RaiseIf(error);
}

std::int32_t QueryNumber(const Key& key, std::string_view name) {
  RaiseAtNul(name);
  std::error_code error;
  const std::int32_t value = key.QueryNumber(name, error);
  RaiseIf(error);
  return value;
}

void SetNumber(Key& key, std::string_view name, std::int32_t value) {
  RaiseAtNul(name);
  std::error_code error;
  key.SetNumber(name, value, error);
  RaiseIf(error);
}

std::optional<Root> RootByName(std::string_view name) {
  for (const Root root :
       {Root::kClassesRoot, Root::kCurrentUser, Root::kLocalMachine, Root::kUsers}) {
    if (platform::EqualIgnoringCase(name, RootName(root))) return root;
  }
  return std::nullopt;
}

std::string RootName(Root root) {
  switch (root) {
    case Root::kClassesRoot:
      return "HKEY_CLASSES_ROOT";
    case Root::kCurrentUser:
      return "HKEY_CURRENT_USER";
    case Root::kLocalMachine:
      return "HKEY_LOCAL_MACHINE";
    case Root::kUsers:
      return "HKEY_USERS";
  }
  return {};
}

std::string ReadText(std::string_view path, std::string_view name) {
  return QueryText(OpenPath(path), name);
}

void WriteText(std::string_view path, std::string_view name, std::string_view value) {
  Key key = OpenPath(path);
  SetText(key, name, value);
}

std::int32_t ReadNumber(std::string_view path, std::string_view name) {
  return QueryNumber(OpenPath(path), name);
}

void WriteNumber(std::string_view path, std::string_view name, std::int32_t value) {
  Key key = OpenPath(path);
  SetNumber(key, name, value);
}

}  // namespace Modreg
