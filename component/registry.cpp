#include "component/registry.h"

#include <algorithm>
#include <cstring>
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

// Of the keys below, the first: ERROR_NO_MORE_ITEMS where there is none. Names of more than 255 characters are against
// the rules, but the system's inner interface makes them.
LSTATUS first_subkey(HKEY key, std::wstring* name) {
  constexpr DWORD kLongestName = 32768;
  LSTATUS found = ERROR_MORE_DATA;
  for (DWORD size = 256; found == ERROR_MORE_DATA && size <= kLongestName; size *= 2) {
    name->resize(size);
    DWORD length = size;
    found = RegEnumKeyExW(key, 0, name->data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (found == ERROR_SUCCESS) name->resize(length);
  }
  return found;
}

// The whole value at one moment, of up to `limit` bytes: others may change it between two looks at it.
LSTATUS read_value(HKEY key, const std::wstring& name, DWORD limit, RegistryContent* content) {
  constexpr int kMostLooks = 16;
  DWORD size = 512;  // more than most values have
  LSTATUS read = ERROR_MORE_DATA;
  for (int look = 0; read == ERROR_MORE_DATA && size <= limit && look < kMostLooks; ++look) {
    content->bytes.resize(size);
    read = RegQueryValueExW(key, name.c_str(), nullptr, &content->type, content->bytes.data(), &size);
  }
  if (read == ERROR_SUCCESS) content->bytes.resize(size);
  return read;
}

// ERROR_FILE_NOT_FOUND where there is no such key.
LSTATUS remove_tree(const ClassesRoot& root, const std::wstring& key_name) {
  {
    Key key;
    if (const LSTATUS opened = key.open(root.key, root.path_of(key_name), KEY_ENUMERATE_SUB_KEYS);
        opened != ERROR_SUCCESS) {
      return opened;
    }
    std::wstring subkey;
    LSTATUS found = first_subkey(key.get(), &subkey);
    for (; found == ERROR_SUCCESS; found = first_subkey(key.get(), &subkey)) {
      const LSTATUS removed = remove_tree(root, key_name + L'\\' + subkey);
      // A key with a NUL in its name is listed, but cannot be named, and would be listed for ever.
      if (removed != ERROR_SUCCESS) return removed == ERROR_FILE_NOT_FOUND ? ERROR_INVALID_NAME : removed;
    }
    if (found != ERROR_NO_MORE_ITEMS) return found;
  }
  return RegDeleteKeyW(root.key, root.path_of(key_name).c_str());  // RegDeleteTree is newer than Windows XP
}

}  // namespace

std::optional<std::wstring> read_registry(const ClassesRoot& root, const std::wstring& key_name,
                                          const std::wstring& name, REGSAM view) {
  constexpr DWORD kLongestText = 65536;  // in bytes: as long as a path can be
  Key key;
  if (key.open(root.key, root.path_of(key_name), KEY_QUERY_VALUE | view) != ERROR_SUCCESS) return {};
  RegistryContent content;
  if (read_value(key.get(), name, kLongestText, &content) != ERROR_SUCCESS || content.type != REG_SZ) return {};
  // Whoever wrote it may have left out the terminator, or cut a character in half.
  std::wstring text(content.bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), content.bytes.data(), text.size() * sizeof(wchar_t));
  text.resize(std::min(text.size(), text.find(L'\0')));
  return text;
}

bool has_subkeys(const ClassesRoot& root, const std::wstring& key_name) {
  Key key;
  std::wstring subkey;
  return key.open(root.key, root.path_of(key_name), KEY_ENUMERATE_SUB_KEYS) == ERROR_SUCCESS &&
         first_subkey(key.get(), &subkey) == ERROR_SUCCESS;
}

LSTATUS remove_key_tree(const ClassesRoot& root, const std::wstring& key_name) {
  const LSTATUS removed = remove_tree(root, key_name);
  return removed == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : removed;
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

LSTATUS RegistryTransaction::write(const RegistryValue& value) {
  const std::wstring path = root_.path_of(value.key);
  if (const LSTATUS created = create_key(path); created != ERROR_SUCCESS) return created;
  Key key;
  LSTATUS status = key.open(root_.key, path, KEY_QUERY_VALUE | KEY_SET_VALUE);
  if (status != ERROR_SUCCESS) return status;
  Undo undo = {.path = path, .key_created = false, .name = value.name, .before = {}};
  RegistryContent before;
  status = read_value(key.get(), value.name, MAXDWORD, &before);
  if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return status;
  if (status == ERROR_SUCCESS) undo.before = std::move(before);
  undo_.push_back(std::move(undo));
  status = RegSetValueExW(key.get(), value.name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(value.data.c_str()),
                          static_cast<DWORD>((value.data.size() + 1) * sizeof(wchar_t)));
  if (status != ERROR_SUCCESS) undo_.pop_back();
  return status;
}

}  // namespace corvelle
