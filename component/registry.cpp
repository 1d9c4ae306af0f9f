#include "component/registry.h"

#include <algorithm>
#include <utility>

namespace corvelle {
namespace {

// An open key.
class Key {
 public:
  Key() = default;
  ~Key() {
    if (handle_ != nullptr) RegCloseKey(handle_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  LSTATUS open(HKEY root, const std::wstring& path, REGSAM access) {
    return RegOpenKeyExW(root, path.c_str(), 0, access, &handle_);
  }
  HKEY get() const { return handle_; }
  HKEY* receive() { return &handle_; }

 private:
  HKEY handle_ = nullptr;
};

std::optional<std::wstring> first_subkey(HKEY key) {
  std::wstring name(256, L'\0');  // the longest name of a key has 255 characters
  auto length = static_cast<DWORD>(name.size());
  if (RegEnumKeyExW(key, 0, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) return {};
  name.resize(length);
  return name;
}

}  // namespace

std::optional<std::wstring> read_registry(const ClassesRoot& root, const std::wstring& key_name,
                                          const std::wstring& name, REGSAM view) {
  Key key;
  if (key.open(root.key, root.path_of(key_name), KEY_QUERY_VALUE | view) != ERROR_SUCCESS) return {};
  DWORD type = 0;
  DWORD bytes = 0;
  if (RegQueryValueExW(key.get(), name.c_str(), nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS) return {};
  if (type != REG_SZ) return {};
  std::wstring data(bytes / sizeof(wchar_t), L'\0');
  if (RegQueryValueExW(key.get(), name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &bytes) !=
      ERROR_SUCCESS) {
    return {};
  }
  data.resize(std::min(data.size(), data.find(L'\0')));  // stored with its terminator, mostly
  return data;
}

bool has_subkeys(const ClassesRoot& root, const std::wstring& key_name) {
  Key key;
  return key.open(root.key, root.path_of(key_name), KEY_ENUMERATE_SUB_KEYS) == ERROR_SUCCESS &&
         first_subkey(key.get()).has_value();
}

// RegDeleteTree is newer than Windows XP.
LSTATUS remove_key_tree(const ClassesRoot& root, const std::wstring& key_name) {
  {
    Key key;
    const LSTATUS opened = key.open(root.key, root.path_of(key_name), KEY_ENUMERATE_SUB_KEYS);
    if (opened == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    if (opened != ERROR_SUCCESS) return opened;
    while (const auto subkey = first_subkey(key.get())) {
      const LSTATUS removed = remove_key_tree(root, key_name + L'\\' + *subkey);
      if (removed != ERROR_SUCCESS) return removed;
    }
  }
  return RegDeleteKeyW(root.key, root.path_of(key_name).c_str());
}

RegistryTransaction::~RegistryTransaction() {
  for (auto step = undo_.rbegin(); step != undo_.rend(); ++step) take_back(*step);
}

// Needs no memory, which may be what has run out.
void RegistryTransaction::take_back(const Undo& step) const {
  if (step.key_created) {
    RegDeleteKeyW(root_.key, step.path.c_str());
    return;
  }
  Key key;
  if (key.open(root_.key, step.path, KEY_SET_VALUE) != ERROR_SUCCESS) return;
  if (step.before) {
    RegSetValueExW(key.get(), step.name.c_str(), 0, step.before->type, step.before->bytes.data(),
                   static_cast<DWORD>(step.before->bytes.size()));
  } else {
    RegDeleteValueW(key.get(), step.name.c_str());
  }
}

// Creates the key level by level, so that each level can be taken back. Each step is noted before it is taken: noting
// may run out of memory.
LSTATUS RegistryTransaction::create_key(const std::wstring& path) {
  for (std::size_t end = path.find(L'\\');; end = path.find(L'\\', end + 1)) {
    const std::wstring level = path.substr(0, end);
    undo_.push_back({.path = level, .key_created = true, .name = {}, .before = {}});
    Key key;
    DWORD disposition = 0;
    const LSTATUS created =
        RegCreateKeyExW(root_.key, level.c_str(), 0, nullptr, 0, KEY_QUERY_VALUE, nullptr, key.receive(), &disposition);
    if (created != ERROR_SUCCESS || disposition != REG_CREATED_NEW_KEY) undo_.pop_back();
    if (created != ERROR_SUCCESS || end == std::wstring::npos) return created;
  }
}

LSTATUS RegistryTransaction::read_content(HKEY key, const std::wstring& name, std::optional<Content>* content) {
  DWORD type = 0;
  DWORD bytes = 0;
  LSTATUS read = RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &bytes);
  if (read == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
  if (read != ERROR_SUCCESS) return read;
  Content found = {.type = type, .bytes = std::vector<BYTE>(bytes)};
  read = RegQueryValueExW(key, name.c_str(), nullptr, &found.type, found.bytes.data(), &bytes);
  if (read == ERROR_SUCCESS) *content = std::move(found);
  return read;
}

LSTATUS RegistryTransaction::write(const RegistryValue& value) {
  const std::wstring path = root_.path_of(value.key);
  if (const LSTATUS created = create_key(path); created != ERROR_SUCCESS) return created;
  Key key;
  LSTATUS status = key.open(root_.key, path, KEY_QUERY_VALUE | KEY_SET_VALUE);
  if (status != ERROR_SUCCESS) return status;
  Undo undo = {.path = path, .key_created = false, .name = value.name, .before = {}};
  status = read_content(key.get(), value.name, &undo.before);
  if (status != ERROR_SUCCESS) return status;
  undo_.push_back(std::move(undo));
  status = RegSetValueExW(key.get(), value.name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(value.data.c_str()),
                          static_cast<DWORD>((value.data.size() + 1) * sizeof(wchar_t)));
  if (status != ERROR_SUCCESS) undo_.pop_back();
  return status;
}

}  // namespace corvelle
