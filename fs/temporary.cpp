// Scratch files and directories: random names, created exclusively, removed
// by their owner.
#include "fs/fs_os.h"

#include <qorin/env.h>

#include <cinttypes>
#include <cstdio>
#include <stdexcept>

namespace qorin {

namespace {

// A prefix or suffix is part of one name: with a separator, "..", a drive's
// ":" or a zero in it the scratch object could land outside its folder.
void check_name_part(const char* operation, const char* which, const std::string& part) {
  if (part.find_first_of(std::string("/\\:\0", 4)) == std::string::npos && part.find("..") == std::string::npos)
    return;
  throw std::invalid_argument(std::string(operation) + ": the scratch name's " + which + " \"" + part +
                              "\" may hold no \"/\", \"\\\", \":\", \"..\" or zero byte");
}

// prefix-<16 random hex digits>suffix, created by `create` directly in dir,
// made absolute first so that a later change of the current directory
// cannot make the owner remove another folder's file; a name that exists
// already is drawn again, anything else fails.
template <class Create>
Path create_unique(const Path& dir, const std::string& prefix, const std::string& suffix, const char* operation,
                   Create create) {
  check_name_part(operation, "prefix", prefix);
  check_name_part(operation, "suffix", suffix);
  if (detail::has_zero_unit(dir.fs_path()))
    throw std::filesystem::filesystem_error(operation, dir.fs_path(), detail::refused_name());
  const Path root = dir.absolute();
  constexpr int kAttempts = 64;  // a clash of 64 random bits is an attacker, not chance
  std::error_code ec;
  Path candidate;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    char random[17];
    std::snprintf(random, sizeof random, "%016" PRIx64, detail::os_random_64());
    candidate = root;
    candidate /= Path(prefix + "-" + random + suffix);
    ec = create(candidate.fs_path());
    if (!ec) return candidate;
    if (ec != std::errc::file_exists) break;
  }
  throw std::filesystem::filesystem_error(operation, candidate.fs_path(), ec);
}

}  // namespace

Path temporary_root() {
  std::string configured;
  if (getenv_check_registry_kstring_allow_empty("QORIN_TEMP_PATH", &configured) && !configured.empty())
    return Path(configured);
  return Path::from_fs_path(std::filesystem::temp_directory_path());
}

ScratchPath::ScratchPath(Path path, bool directory) : path_(std::move(path)), directory_(directory) {}

ScratchPath::~ScratchPath() { release(); }

ScratchPath::ScratchPath(ScratchPath&& other) noexcept
    : path_(std::move(other.path_)), keep_(other.keep_), directory_(other.directory_) {
  other.path_.clear();
}

ScratchPath& ScratchPath::operator=(ScratchPath&& other) noexcept {
  if (this != &other) {
    release();
    path_ = std::move(other.path_);
    keep_ = other.keep_;
    directory_ = other.directory_;
    other.path_.clear();
  }
  return *this;
}

void ScratchPath::release() noexcept {
  if (!keep_ && !path_.empty()) {
    std::error_code ignored;  // nothing sensible to do from a destructor
    if (directory_) {
      std::filesystem::remove_all(path_.fs_path(), ignored);
    } else {
      std::filesystem::remove(path_.fs_path(), ignored);
    }
  }
  path_.clear();
}

TemporaryDirectory::TemporaryDirectory(const std::string& prefix) : TemporaryDirectory(temporary_root(), prefix) {}

TemporaryDirectory::TemporaryDirectory(const Path& parent, const std::string& prefix)
    : ScratchPath(create_unique(parent, prefix, "", "create_directory", detail::os_create_private_directory), true) {}

TemporaryFile::TemporaryFile(const std::string& prefix, const std::string& suffix)
    : TemporaryFile(temporary_root(), prefix, suffix) {}

TemporaryFile::TemporaryFile(const Path& dir, const std::string& prefix, const std::string& suffix)
    : ScratchPath(create_unique(dir, prefix, suffix, "create_file", detail::os_create_private_file), false) {}

}  // namespace qorin
