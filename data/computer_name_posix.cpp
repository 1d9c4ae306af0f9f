#include <unistd.h>

#include <algorithm>
#include <climits>
#include <iterator>

#include "data/computer_name.h"

namespace corvelle {

Result<Text> GetComputerNm() {
  char buffer[HOST_NAME_MAX + 1] = {};
  gethostname(buffer, sizeof buffer - 1);  // one that fails leaves the NULs, and so an empty name
  const auto size = static_cast<std::uint32_t>(std::find(std::begin(buffer), std::end(buffer), '.') - buffer);
  char16_t wide[sizeof buffer];
  std::copy(std::begin(buffer), std::end(buffer), wide);
  return computer_name_in({wide, sizeof buffer}, size);
}

}  // namespace corvelle
