// tools/make_manifests.cpp - writes the manifests for use without registration, from the list of classes.
//
//   make_manifests VERSION FOLDER
//
// FOLDER gets Corvelle.X.manifest, which describes the DLL beside it as a side-by-side assembly of this bitness, and
// Corvelle.manifest, an application manifest that asks for that assembly. The assembly's name is not the DLL's: the
// system would look for a manifest inside a Corvelle.dll first, and find none.

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "component/registration_keys.h"

namespace corvelle {
namespace {

// The system's own marshaller of interfaces that a type library describes.
constexpr char kTypeLibraryMarshaller[] = "{00020424-0000-0000-C000-000000000046}";
constexpr char kDispatchId[] = "{00020400-0000-0000-C000-000000000046}";
constexpr std::size_t kInheritedMembers = 7;  // of IUnknown and IDispatch
#ifdef _WIN64
constexpr char kArchitecture[] = "amd64";
#else
constexpr char kArchitecture[] = "x86";
#endif

// Names and help texts of classes are plain ASCII without characters that XML reserves.
std::string narrow(std::wstring_view ascii) {
  std::string result;
  for (const wchar_t unit : ascii) result += static_cast<char>(unit);
  return result;
}

std::string text_of(const GUID& id) { return narrow(text_of_id(id)); }

std::string assembly(const std::string& content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
         "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n" +
         content + "</assembly>\n";
}

std::string identity(const std::string& name, const std::string& version) {
  return "<assemblyIdentity type=\"win32\" name=\"" + name + "\" version=\"" + version + "\" processorArchitecture=\"" +
         kArchitecture + "\"/>\n";
}

std::string com_class(const ClassDescription& description) {
  return "    <comClass clsid=\"" + text_of(description.class_id) + "\" progid=\"" + narrow(description.prog_id) +
         "\" threadingModel=\"Apartment\"\n              tlbid=\"" + text_of(kLibraryId) + "\" description=\"" +
         narrow(description.help) + "\"/>\n";
}

std::string com_interface(const ClassDescription& description) {
  return "  <comInterfaceExternalProxyStub name=\"" + narrow(description.interface_name) + "\" iid=\"" +
         text_of(description.interface_id) + "\"\n                                 tlbid=\"" + text_of(kLibraryId) +
         "\" baseInterface=\"" + kDispatchId + "\"\n                                 numMethods=\"" +
         std::to_string(kInheritedMembers + description.operations.size()) + "\" proxyStubClsid32=\"" +
         kTypeLibraryMarshaller + "\"/>\n";
}

std::string component_manifest(const std::string& version) {
  std::string classes;
  std::string interfaces;
  for (const ClassDescription* description : kClasses) {
    classes += com_class(*description);
    interfaces += com_interface(*description);
  }
  return assembly("  " + identity("Corvelle.X", version) + "  <file name=\"Corvelle.dll\">\n" + classes +
                  "    <typelib tlbid=\"" + text_of(kLibraryId) + "\" version=\"" + narrow(kVersion) +
                  "\" helpdir=\"\"/>\n  </file>\n" + interfaces);
}

std::string application_manifest(const std::string& version) {
  return assembly("  " + identity("Corvelle.Host", version) + "  <dependency>\n    <dependentAssembly>\n      " +
                  identity("Corvelle.X", version) + "    </dependentAssembly>\n  </dependency>\n");
}

bool write(const std::string& path, const std::string& content) {
  std::ofstream file(path, std::ios::binary);
  file << content;
  return file.flush().good();
}

}  // namespace
}  // namespace corvelle

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: make_manifests VERSION FOLDER\n", stderr);
    return 2;
  }
  const std::string version = arguments[1];
  const std::string folder = arguments[2];
  const bool written = corvelle::write(folder + "/Corvelle.X.manifest", corvelle::component_manifest(version)) &&
                       corvelle::write(folder + "/Corvelle.manifest", corvelle::application_manifest(version));
  if (!written) std::fputs("make_manifests: cannot write the manifests\n", stderr);
  return written ? 0 : 1;
}
