#include "Version.h"

namespace Plexidex {

const char* Version() {
  return KT_VERSION;
}

}  // namespace Plexidex
