// tools/make_manifests.cpp - writes the manifests for use without registration, from the list of classes.
//
//   make_manifests VERSION x86|amd64 FOLDER
//
// FOLDER gets Corvelle.X.manifest, which describes the DLL beside it as a side-by-side assembly of that bitness, and
// Corvelle.manifest, an application manifest that asks for that assembly. The assembly's name is not the DLL's: the
// system would look for a manifest inside a Corvelle.dll first, and find none.

#include <cstdio>
#include <string>

#include "component/class_description.h"
#include "tools/generated_text.h"

namespace corvelle {
namespace {

// The system's own marshaller of interfaces that a type library describes.
constexpr char kTypeLibraryMarshaller[] = "{00020424-0000-0000-C000-000000000046}";
constexpr char kDispatchId[] = "{00020400-0000-0000-C000-000000000046}";
constexpr std::size_t kInheritedMembers = 7;  // of IUnknown and IDispatch

std::string text_of(const GUID& id) { return "{" + in_registry_form(id) + "}"; }

// What stands in every identity of both manifests.
struct Release {
  std::string version;
  std::string architecture;
};

std::string assembly(const std::string& content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
         "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n" +
         content + "</assembly>\n";
}

std::string identity(const std::string& name, const Release& release) {
  return "<assemblyIdentity type=\"win32\" name=\"" + name + "\" version=\"" + release.version +
         "\" processorArchitecture=\"" + release.architecture + "\"/>\n";
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

std::string component_manifest(const Release& release) {
  std::string classes;
  std::string interfaces;
  for (const ClassDescription* description : kClasses) {
    classes += com_class(*description);
    interfaces += com_interface(*description);
  }
  return assembly("  " + identity("Corvelle.X", release) + "  <file name=\"Corvelle.dll\">\n" + classes +
                  "    <typelib tlbid=\"" + text_of(kLibraryId) + "\" version=\"" + std::to_string(kLibraryMajor) +
                  "." + std::to_string(kLibraryMinor) + "\" helpdir=\"\"/>\n  </file>\n" + interfaces);
}

std::string application_manifest(const Release& release) {
  return assembly("  " + identity("Corvelle.Host", release) + "  <dependency>\n    <dependentAssembly>\n      " +
                  identity("Corvelle.X", release) + "    </dependentAssembly>\n  </dependency>\n");
}

}  // namespace
}  // namespace corvelle

int main(int count, char** arguments) {
  if (count != 4) {
    std::fputs("usage: make_manifests VERSION x86|amd64 FOLDER\n", stderr);
    return 2;
  }
  const corvelle::Release release = {arguments[1], arguments[2]};
  const std::string folder = arguments[3];
  const bool written = corvelle::write(folder + "/Corvelle.X.manifest", corvelle::component_manifest(release)) &&
                       corvelle::write(folder + "/Corvelle.manifest", corvelle::application_manifest(release));
  if (!written) std::fputs("make_manifests: cannot write the manifests\n", stderr);
  return written ? 0 : 1;
}
