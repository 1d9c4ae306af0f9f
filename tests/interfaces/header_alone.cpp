// The shipped header in a host's source that has nothing else, by an old standard and without the project's settings.
#include "Corvelle.h"

IDispatch* as_dispatch(_ClsValidate* validate, _ClsVexApp* vex_app) {
  if (validate != NULL) return validate;
  return vex_app;
}
