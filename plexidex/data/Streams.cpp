#include <algorithm>
#include <exception>

#include "Kt_data_01.h"

namespace Kt_data_01 {

void TMemory_Stream::Write(std::string_view bytes) {
  data.resize(std::max(data.size(), Position + bytes.size()));
  std::copy(bytes.begin(), bytes.end(), data.begin() + static_cast<std::ptrdiff_t>(Position));
  Position += bytes.size();
}

std::string_view TMemory_Stream::Read_All() {
  const std::string_view rest = std::string_view(data).substr(std::min(Position, data.size()));
  Position = data.size();
  return rest;
}

TBlob_Stream::TBlob_Stream(TTable& table, TField field, TMode mode) : table(table), field(field), mode(mode) {
  if (mode == TMode::Read) {
    data = table.Blob(field);
  } else {
    table.Set_Blob(field, {});
  }
}

TBlob_Stream::~TBlob_Stream() {
  if (mode == TMode::Write) table.Set_Blob(field, data);
}

}  // namespace Kt_data_01
