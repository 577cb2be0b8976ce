#include <qorin/debug.h>
#include <qorin/fs.h>

namespace qorin {

DirectorySaver::DirectorySaver() : saved_(Path::current_path()) {}

DirectorySaver::~DirectorySaver() {
  // A destructor must not throw; the reporters tell the user instead.
  try {
    std::error_code ec;
    std::filesystem::current_path(saved_.fs_path(), ec);
    if (ec) reportError("Could not return to the directory " + saved_.string() + ": " + ec.message());
  } catch (...) {
  }
}

}  // namespace qorin
