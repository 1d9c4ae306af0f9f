#include "component/boundary.h"

#include "component/module.h"

namespace corvelle {

void release_error(IErrorInfo* error) noexcept {
  const ModuleReference loaded;
  error->Release();
}

}  // namespace corvelle
