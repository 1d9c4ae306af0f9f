// The type libraries' own bytes against the operation table, field by field, also those that one platform's reader
// leaves alone: another's may use them.
#include "tests/interfaces/type_library_file.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <oaidl.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "component/class_description.h"
#include "tests/support/utf8.h"

namespace corvelle::testing {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr std::uint32_t kInheritedMembers = 7;
constexpr std::uint32_t kPointer = sizeof(void*);
constexpr std::uint32_t kSystem = kPointer == 8 ? SYS_WIN64 : SYS_WIN32;

struct Library {
  const char* file;
  bool imports_database;
};

std::uint32_t simple(VARTYPE type) { return 0x80000000U | static_cast<std::uint32_t>(type << 16) | type; }
std::string narrow(const wchar_t* ascii) { return utf8(reinterpret_cast<const char16_t*>(ascii)); }

// What stands in a record for one parameter, results too.
struct ParameterRecord {
  std::string type;
  std::string name;
  std::uint32_t flags = 0;

  friend bool operator==(const ParameterRecord&, const ParameterRecord&) = default;
  friend void PrintTo(const ParameterRecord& record, std::ostream* out) {
    *out << record.type << " " << record.name << " " << std::hex << record.flags << std::dec;
  }
};

class TypeLibraryBytes : public ::testing::TestWithParam<Library> {
 protected:
  // The places of the records of the functions of type `index`.
  std::vector<std::size_t> functions(std::uint32_t index) const {
    std::vector<std::size_t> places;
    std::size_t place = file_.word(file_.type(index) + kMembers) + std::size_t{4};
    for (std::uint32_t i = 0; i < file_.half(file_.type(index) + kMemberCount); ++i) {
      places.push_back(place);
      place += file_.half(place);
    }
    return places;
  }
  // A word of one of the three lists behind the functions: DISPIDs, names, offsets.
  std::uint32_t behind_functions(std::uint32_t index, std::size_t list, std::size_t function) const {
    const std::uint32_t members = file_.word(file_.type(index) + kMembers);
    const std::size_t count = file_.half(file_.type(index) + kMemberCount);
    return file_.word(members + 4 + file_.word(members) + 4 * (list * count + function));
  }

  bool imported(VARTYPE type) const { return type == kDatabaseType && GetParam().imports_database; }

  std::string expected_type(VARTYPE type, bool pointer) const {
    if (imported(type)) return "pointer to imported";
    return (pointer ? "pointer to " : "") + std::to_string(type);
  }
  std::string type_shown(std::uint32_t type) const {
    if ((type & 0x80000000U) != 0) return type == simple(type & 0xFFFF) ? std::to_string(type & 0xFFFF) : "half a type";
    const std::size_t descriptor = file_.place(Segment::type_descriptors, type);
    if (file_.half(descriptor) == VT_USERDEFINED) return (file_.word(descriptor + 4) & 1) != 0 ? "imported" : "own";
    if (file_.half(descriptor) != VT_PTR) return "no pointer";
    return "pointer to " + type_shown(file_.word(descriptor + 4));
  }

  std::vector<ParameterRecord> expected_parameters(const Operation& operation) const {
    std::vector<ParameterRecord> records;
    for (const Parameter& parameter : operation.parameters()) {
      std::uint32_t flags = PARAMFLAG_FIN;
      if (parameter.by_reference()) flags |= PARAMFLAG_FOUT;
      if (parameter.optional()) flags |= PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT;
      records.push_back({expected_type(parameter.value_type(), parameter.by_reference()), utf8(parameter.name), flags});
    }
    if (operation.result != VT_VOID) {
      records.push_back({expected_type(operation.result, true), "result", PARAMFLAG_FOUT | PARAMFLAG_FRETVAL});
    }
    return records;
  }
  std::vector<ParameterRecord> parameters(std::size_t function) const {
    std::vector<ParameterRecord> records;
    const std::size_t count = file_.half(function + 20);
    for (std::size_t place = function + file_.half(function) - 12 * count; records.size() < count; place += 12) {
      const std::uint32_t name = file_.word(place + 4);
      records.push_back(
          {type_shown(file_.word(place)), name == kNone ? "nothing" : file_.name(name), file_.word(place + 8)});
    }
    return records;
  }

  // The words for the defaults in front of the parameters, as text.
  std::vector<std::string> expected_defaults(const Operation& operation) const {
    std::vector<std::string> texts;
    for (const Parameter& parameter : operation.parameters()) {
      const DefaultValue& value = parameter.default_value;
      if (!parameter.optional()) {
        texts.emplace_back("none");
      } else if (value.kind == DefaultValue::Kind::int16) {
        texts.push_back("int16 " + std::to_string(value.int16));
      } else {
        texts.emplace_back("\xC4\xEA\xD4\xC2\xC8\xD5");  // 年月日 in code page 936
      }
    }
    if (operation.result != VT_VOID) texts.emplace_back("none");
    return texts;
  }
  std::vector<std::string> defaults(std::size_t function) const {
    std::vector<std::string> texts;
    const std::size_t count = file_.half(function + 20);
    for (std::size_t place = function + file_.half(function) - 16 * count; texts.size() < count; place += 4) {
      const std::uint32_t value = file_.word(place);
      if (value == kNone) {
        texts.emplace_back("none");
      } else if ((value & 0x80000000U) != 0) {
        const std::string type = (value >> 26 & 0x1F) == VT_I2 ? "int16 " : "another number ";
        texts.push_back(type + std::to_string(value & 0xFFFF));
      } else {
        texts.push_back(file_.custom_text(value));
      }
    }
    return texts;
  }

  // How much memory a reader needs for the record: for itself, each parameter, each pointer among the types, each
  // default.
  std::uint32_t expected_memory(const Operation& operation) const {
    std::uint32_t size = 0x34;
    for (const Parameter& parameter : operation.parameters()) {
      size += 0x10;
      if (parameter.by_reference() || imported(parameter.value_type())) size += 8;
      if (parameter.optional()) size += 0x18;
    }
    return operation.result == VT_VOID ? size : size + 0x10 + 8;
  }

  void check_function(const Operation& operation, std::uint32_t index, std::size_t function) const {
    const auto optional = std::ranges::count_if(operation.parameters(), &Parameter::optional);
    const std::size_t count = operation.parameters().size() + (operation.result == VT_VOID ? 0 : 1);
    constexpr std::uint32_t kPureVirtual = 1;
    constexpr std::uint32_t kMethod = INVOKE_FUNC << 3;
    constexpr std::uint32_t kStandardCall = CC_STDCALL << 8;
    constexpr std::uint32_t kHasDefaults = 0x1000;
    constexpr std::uint32_t kHasResult = 0x4000;
    EXPECT_EQ(file_.half(function + 2), index);
    EXPECT_EQ(file_.word(function + 4), simple(VT_HRESULT));
    EXPECT_EQ(file_.word(function + 8), 0U) << "flags";
    EXPECT_EQ(file_.half(function + 12), (kInheritedMembers + index) * kPointer) << "offset in the vtable";
    EXPECT_EQ(file_.half(function + 14), expected_memory(operation));
    EXPECT_EQ(file_.half(function + 16), kPureVirtual | kMethod | kStandardCall | (optional > 0 ? kHasDefaults : 0) |
                                             (operation.result == VT_VOID ? 0 : kHasResult));
    EXPECT_EQ(file_.half(function + 18), index) << "beside the kinds";
    EXPECT_EQ(file_.half(function + 20), count);
    EXPECT_EQ(file_.half(function + 22), optional);
    EXPECT_EQ(file_.text(file_.word(function + 28)), operation.help);
    EXPECT_EQ(file_.half(function), 24 + 8 + 12 * count + (optional > 0 ? 4 * count : 0)) << "bytes of the record";
    EXPECT_EQ(parameters(function), expected_parameters(operation));
    if (optional > 0) {
      EXPECT_EQ(defaults(function), expected_defaults(operation));
    }
  }

  const TypeLibraryFile file_{bytes_of(std::filesystem::path(CORVELLE_FOLDER) / GetParam().file)};
};

TEST_P(TypeLibraryBytes, HaveTheHeader) {
  EXPECT_EQ(file_.bytes().substr(0, 4), "MSFT");
  EXPECT_EQ(file_.word(kFormat), 0x00010002U);
  EXPECT_EQ(file_.guid(file_.word(kLibraryGuid)), kLibraryId);
  EXPECT_EQ(file_.word(kLocale), 0U) << "a reader may decode the default text by it";
  EXPECT_EQ(file_.word(kSecondLocale), 0U);
  EXPECT_EQ(file_.word(kVariant) & 0xF, kSystem);
  EXPECT_EQ(file_.half(kLibraryVersion), kLibraryMajor);
  EXPECT_EQ(file_.half(kLibraryVersion + 2), kLibraryMinor);
  EXPECT_EQ(file_.word(kTypeCount), 2 * kClasses.size());
  EXPECT_EQ(file_.name(file_.word(kName)), narrow(kLibraryName));
  EXPECT_EQ(file_.text(file_.word(kHelp)), narrow(kLibraryHelp));
}

// Everything that is asked for elsewhere, by the names that its files have on every machine.
TEST_P(TypeLibraryBytes, NameTheImportedFiles) {
  std::vector<std::string> files;
  const std::size_t start = file_.place(Segment::import_files, 0);
  const std::size_t size = file_.word(84 + 4 * std::size_t{file_.word(kTypeCount)} + 16 * 2 + 4);
  for (std::size_t place = start; place < start + size;) {
    const std::size_t length = file_.half(place + 12) >> 2;
    files.emplace_back(file_.bytes().substr(place + 14, length));
    if (files.back() == "dao350.dll") {
      EXPECT_EQ(file_.guid(file_.word(place)), kDataAccessLibraryId);
      EXPECT_EQ(file_.half(place + 8), kDataAccessMajor);
      EXPECT_EQ(file_.half(place + 10), kDataAccessMinor);
    }
    EXPECT_EQ(file_.word(place + 4), 0U) << "locale";
    place += (14 + length + 3) / 4 * 4;
  }
  std::vector<std::string> expected = {"stdole2.tlb"};
  if (GetParam().imports_database) expected.emplace_back("dao350.dll");
  EXPECT_EQ(files, expected);
}

TEST_P(TypeLibraryBytes, DescribeTheInterfaces) {
  for (std::uint32_t i = 0; i < kClasses.size(); ++i) {
    SCOPED_TRACE(narrow(kClasses[i]->interface_name));
    const std::size_t type = file_.type(2 * i);
    const auto count = static_cast<std::uint32_t>(kClasses[i]->operations.size());
    EXPECT_EQ(file_.word(type + kKind) & 0xF, static_cast<std::uint32_t>(TKIND_DISPATCH)) << "of a dual interface";
    EXPECT_EQ(file_.word(type + kKind) >> 11 & 0x1F, kPointer) << "alignment";
    EXPECT_EQ(file_.word(type + kKind) >> 16, 2 * i);
    EXPECT_EQ(file_.word(type + kMemberCount), count);
    EXPECT_EQ(file_.guid(file_.word(type + kTypeGuid)), kClasses[i]->interface_id);
    EXPECT_EQ(file_.word(type + kTypeFlags), std::uint32_t{TYPEFLAG_FHIDDEN | TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE |
                                                           TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE});
    EXPECT_EQ(file_.name(file_.word(type + kTypeName)), narrow(kClasses[i]->interface_name));
    EXPECT_EQ(file_.word(type + kTypeVersion), kLibraryMajor | kLibraryMinor << 16);
    EXPECT_EQ(file_.word(type + kTypeHelp), kNone);
    EXPECT_EQ(file_.half(type + kInterfacesAndTable), 1U);
    EXPECT_EQ(file_.half(type + kInterfacesAndTable + 2), (kInheritedMembers + count) * kPointer)
        << "bytes of the vtable";
    EXPECT_EQ(file_.word(type + kSize), kPointer);
    EXPECT_EQ(file_.word(type + kBase) & 1, 1U) << "IDispatch is imported";
    EXPECT_EQ(file_.word(type + kInherited), kInheritedMembers << 16 | 2) << "from two interfaces";
  }
}

// What compilers write into two fields whose meaning nobody has told: both grow by each function.
TEST_P(TypeLibraryBytes, HaveTheSizesOfCompilers) {
  for (std::uint32_t i = 0; i < kClasses.size(); ++i) {
    SCOPED_TRACE(narrow(kClasses[i]->interface_name));
    std::uint32_t second = 0;
    std::uint32_t third = 0;
    std::size_t index = 0;
    for (const Operation& operation : kClasses[i]->operations) {
      const auto count =
          static_cast<std::uint32_t>(operation.parameters().size()) + (operation.result == VT_VOID ? 0 : 1);
      const bool optional = std::ranges::any_of(operation.parameters(), &Parameter::optional);
      second = (second == 0 ? 0x20 : second) << 1;
      if (index++ < 2) second += count << 4;
      third += 0x38 + count * (optional ? 0x14 : 0x10);
    }
    EXPECT_EQ(file_.word(file_.type(2 * i) + kUnknownSize2), second);
    EXPECT_EQ(file_.word(file_.type(2 * i) + kUnknownSize3), third);
  }
}

TEST_P(TypeLibraryBytes, DescribeTheClasses) {
  for (std::uint32_t i = 0; i < kClasses.size(); ++i) {
    SCOPED_TRACE(narrow(kClasses[i]->name));
    const std::size_t type = file_.type(2 * i + 1);
    EXPECT_EQ(file_.word(type + kKind) & 0xF, static_cast<std::uint32_t>(TKIND_COCLASS));
    EXPECT_EQ(file_.word(type + kKind) >> 11 & 0x1F, 4U) << "alignment, of the compiler's classes in both bitnesses";
    EXPECT_EQ(file_.word(type + kUnknownSize2), 0U);
    EXPECT_EQ(file_.word(type + kUnknownSize3), kNone) << "no functions";
    EXPECT_EQ(file_.word(type + kMemberCount), 0U);
    EXPECT_EQ(file_.guid(file_.word(type + kTypeGuid)), kClasses[i]->class_id);
    EXPECT_EQ(file_.word(type + kTypeFlags), std::uint32_t{TYPEFLAG_FCANCREATE});
    EXPECT_EQ(file_.name(file_.word(type + kTypeName)), narrow(kClasses[i]->name));
    EXPECT_EQ(file_.text(file_.word(type + kTypeHelp)), narrow(kClasses[i]->help));
    EXPECT_EQ(file_.half(type + kInterfacesAndTable), 1U);
    EXPECT_EQ(file_.word(type + kSize), kPointer);
    EXPECT_EQ(file_.word(type + kInherited), 0U);
  }
}

TEST_P(TypeLibraryBytes, DescribeEveryOperation) {
  for (std::uint32_t i = 0; i < kClasses.size(); ++i) {
    const std::vector<std::size_t> places = functions(2 * i);
    ASSERT_EQ(places.size(), kClasses[i]->operations.size());
    for (std::uint32_t index = 0; index < places.size(); ++index) {
      const Operation& operation = kClasses[i]->operations[index];
      SCOPED_TRACE(utf8(operation.name));
      check_function(operation, index, places[index]);
      EXPECT_EQ(behind_functions(2 * i, 0, index), static_cast<std::uint32_t>(operation.dispid));
      EXPECT_EQ(file_.name(behind_functions(2 * i, 1, index)), utf8(operation.name));
      EXPECT_EQ(behind_functions(2 * i, 2, index), places[index] - places[0]);
    }
  }
}

// A name belongs to the first type that has a member of it.
TEST_P(TypeLibraryBytes, GiveMembersNamesToTheirTypes) {
  std::map<std::string, std::uint32_t> owners;
  for (std::uint32_t i = 0; i < kClasses.size(); ++i) {
    for (std::size_t index = 0; index < kClasses[i]->operations.size(); ++index) {
      const std::string name = utf8(kClasses[i]->operations[index].name);
      owners.emplace(name, 2 * i * kTypeSize);
      EXPECT_EQ(file_.owner_of_name(behind_functions(2 * i, 1, index)), owners[name]) << name;
    }
  }
}

// The same sources give the same file, whenever it is written, and by whichever release's compiler.
TEST_P(TypeLibraryBytes, DoNotSayWhatVersionOfTheCompilerWroteThemWhen) {
  const std::string text = file_.custom_text(0);
  EXPECT_TRUE(text.starts_with("Created by WIDL version 0")) << text;
  const std::size_t version = text.find('0');
  EXPECT_EQ(text.substr(text.find_first_not_of("0.", version)), " at Thu Jan  1 00:00:00 1970\n");
  const std::size_t behind = file_.place(Segment::custom_data, 0) + (2 + 4 + file_.custom_text(0).size() + 3) / 4 * 4;
  EXPECT_EQ(file_.half(behind), VT_UI4);
  EXPECT_EQ(file_.half(behind + 2) | file_.half(behind + 4), 0);
}

TEST_P(TypeLibraryBytes, StandInTheDll) {
  const std::string dll = bytes_of(std::filesystem::path(CORVELLE_FOLDER) / "Corvelle.dll");
  EXPECT_NE(dll.find(file_.bytes()), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Files, TypeLibraryBytes,
                         ::testing::Values(Library{"Corvelle.tlb", true},
                                           Library{"Corvelle_self_contained.tlb", false}),
                         [](const auto& library) { return std::string(library.index == 0 ? "Own" : "SelfContained"); });

}  // namespace
}  // namespace corvelle::testing
