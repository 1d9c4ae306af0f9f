#include "component/registry.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "base/slice.h"
#include "base/wide_windows.h"

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

  LSTATUS open(HKEY root, const wchar_t* path, REGSAM access) { return RegOpenKeyExW(root, path, 0, access, &handle_); }
  HKEY get() const { return handle_; }
  HKEY* receive() { return &handle_; }

 private:
  HKEY handle_ = nullptr;
};

// The whole value at one moment, of up to `limit` bytes: others may change it between two looks at it.
LSTATUS read_value(HKEY key, const wchar_t* name, DWORD limit, RegistryContent* content) {
  constexpr int kMostLooks = 16;
  content->size = 512;  // more than most values have
  LSTATUS read = ERROR_MORE_DATA;
  for (int look = 0; read == ERROR_MORE_DATA && content->size <= limit && look < kMostLooks; ++look) {
    content->bytes.reset(static_cast<BYTE*>(std::malloc(content->size)));
    if (content->bytes == nullptr) return ERROR_OUTOFMEMORY;
    read = RegQueryValueExW(key, name, nullptr, &content->type, content->bytes.get(), &content->size);
  }
  return read;
}

// Of the keys below, the first: ERROR_NO_MORE_ITEMS where there is none. Names of more than 255 characters are against
// the rules, but the system's inner interface makes them.
LSTATUS first_subkey(HKEY key, Text* name) {
  constexpr DWORD kLongestName = 32768;
  LSTATUS found = ERROR_MORE_DATA;
  for (DWORD size = 256; found == ERROR_MORE_DATA && size <= kLongestName; size *= 2) {
    *name = Text::of_length(size);
    if (name->failed()) return ERROR_OUTOFMEMORY;
    DWORD length = size;  // with the NUL that the system writes
    found = RegEnumKeyExW(key, 0, as_wide(name->data()), &length, nullptr, nullptr, nullptr, nullptr);
  }
  return found;
}

// ERROR_FILE_NOT_FOUND where there is no such key.
LSTATUS remove_tree(HKEY parent, const wchar_t* name) {
  {
    Key key;
    if (const LSTATUS opened = key.open(parent, name, KEY_ENUMERATE_SUB_KEYS); opened != ERROR_SUCCESS) return opened;
    Text subkey;
    LSTATUS found = first_subkey(key.get(), &subkey);
    for (; found == ERROR_SUCCESS; found = first_subkey(key.get(), &subkey)) {
      const LSTATUS removed = remove_tree(key.get(), as_wide(subkey));
      // A key with a NUL in its name is listed, but cannot be named, and would be listed for ever.
      if (removed != ERROR_SUCCESS) return removed == ERROR_FILE_NOT_FOUND ? ERROR_INVALID_NAME : removed;
    }
    if (found != ERROR_NO_MORE_ITEMS) return found;
  }
  return RegDeleteKeyW(parent, name);  // RegDeleteTree is newer than Windows XP
}

}  // namespace

LSTATUS read_registry(const ClassesRoot& root, std::wstring_view key_name, const wchar_t* name, REGSAM view,
                      Text* text) {
  constexpr DWORD kLongestText = 65536;  // in bytes: as long as a path can be
  Key key;
  LSTATUS status = key.open(root.key, root.path_of(key_name).c_str(), KEY_QUERY_VALUE | view);
  if (status != ERROR_SUCCESS) return status;
  RegistryContent content;
  status = read_value(key.get(), name, kLongestText, &content);
  if (status != ERROR_SUCCESS) return status == ERROR_OUTOFMEMORY ? status : ERROR_FILE_NOT_FOUND;
  if (content.type != REG_SZ) return ERROR_FILE_NOT_FOUND;
  // Whoever wrote it may have left out the terminator, or cut a character in half.
  const std::u16string_view units(reinterpret_cast<const char16_t*>(content.bytes.get()),
                                  content.size / sizeof(char16_t));
  *text = Text(first_of(units, units.find(u'\0')));
  return text->failed() ? ERROR_OUTOFMEMORY : ERROR_SUCCESS;
}

bool has_subkeys(const ClassesRoot& root, std::wstring_view key_name) {
  Key key;
  if (key.open(root.key, root.path_of(key_name).c_str(), KEY_ENUMERATE_SUB_KEYS) != ERROR_SUCCESS) return false;
  wchar_t name[256];
  DWORD length = 256;
  const LSTATUS found = RegEnumKeyExW(key.get(), 0, name, &length, nullptr, nullptr, nullptr, nullptr);
  return found == ERROR_SUCCESS || found == ERROR_MORE_DATA;
}

LSTATUS remove_key_tree(const ClassesRoot& root, std::wstring_view key_name) {
  const LSTATUS removed = remove_tree(root.key, root.path_of(key_name).c_str());
  return removed == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : removed;
}

// How to take one step back: delete the key, or give the value its content back, if it had one.
struct RegistryTransaction::Undo : FromHeap {
  Undo(const KeyPath& of, const wchar_t* named) : path(of), name(named) {}

  // Needs no memory, which may be what has run out.
  void take_back(HKEY root) const {
    if (name == nullptr) {
      RegDeleteKeyW(root, path.c_str());
      return;
    }
    Key key;
    if (key.open(root, path.c_str(), KEY_SET_VALUE) != ERROR_SUCCESS) return;
    if (had_value) {
      RegSetValueExW(key.get(), name, 0, before.type, before.bytes.get(), before.size);
    } else {
      RegDeleteValueW(key.get(), name);
    }
  }

  KeyPath path;         // below the root's key
  const wchar_t* name;  // of the value; null for the key
  bool had_value = false;
  RegistryContent before;
  std::unique_ptr<Undo> earlier;
};

RegistryTransaction::RegistryTransaction(const ClassesRoot& root) : root_(root) {}

RegistryTransaction::~RegistryTransaction() {
  for (; last_ != nullptr; forget_last()) last_->take_back(root_.key);
}

void RegistryTransaction::commit() {
  while (last_ != nullptr) forget_last();
}

void RegistryTransaction::forget_last() { last_ = std::move(last_->earlier); }

// Each step is noted before it is taken: noting may run out of memory.
RegistryTransaction::Undo* RegistryTransaction::note(const KeyPath& path, const wchar_t* name) {
  std::unique_ptr<Undo> step(new Undo(path, name));
  if (step == nullptr) return nullptr;
  step->earlier = std::move(last_);
  last_ = std::move(step);
  return last_.get();
}

// Creates the key level by level, so that each level can be taken back.
LSTATUS RegistryTransaction::create_key(std::wstring_view path) {
  for (std::size_t end = path.find(L'\\');; end = path.find(L'\\', end + 1)) {
    const KeyPath level = KeyPath().append({path.data(), std::min(end, path.size())});
    if (note(level, nullptr) == nullptr) return ERROR_OUTOFMEMORY;
    Key key;
    DWORD disposition = 0;
    const LSTATUS created =
        RegCreateKeyExW(root_.key, level.c_str(), 0, nullptr, 0, KEY_QUERY_VALUE, nullptr, key.receive(), &disposition);
    if (created != ERROR_SUCCESS || disposition != REG_CREATED_NEW_KEY) forget_last();
    if (created != ERROR_SUCCESS || end == path.npos) return created;
  }
}

LSTATUS RegistryTransaction::write_value(const KeyPath& path, const wchar_t* name, std::wstring_view data) {
  if (const LSTATUS created = create_key(path); created != ERROR_SUCCESS) return created;
  Key key;
  LSTATUS status = key.open(root_.key, path.c_str(), KEY_QUERY_VALUE | KEY_SET_VALUE);
  if (status != ERROR_SUCCESS) return status;
  RegistryContent before;
  status = read_value(key.get(), name, MAXDWORD, &before);
  if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return status;
  Undo* undo = note(path, name);
  if (undo == nullptr) return ERROR_OUTOFMEMORY;
  undo->had_value = status == ERROR_SUCCESS;
  undo->before = std::move(before);
  status = RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(data.data()),
                          static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t)));
  if (status != ERROR_SUCCESS) forget_last();
  return status;
}

LSTATUS RegistryTransaction::write(std::wstring_view key, const wchar_t* name, std::wstring_view data) {
  if (status_ == ERROR_SUCCESS) status_ = write_value(root_.path_of(key), name, data);
  return status_;
}

}  // namespace corvelle
