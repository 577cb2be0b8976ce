#include "batched_log_file.h"

namespace qorin::tool {

std::string BatchedLogFile::failure() {
  const std::error_code opening = openError();
  const std::error_code writing = writeError();
  if (!opening && !writing) return "";
  return std::string(opening ? "cannot open" : "cannot write") + " log file \"" + getFilename() +
         "\": " + (opening ? opening : writing).message();
}

}  // namespace qorin::tool
