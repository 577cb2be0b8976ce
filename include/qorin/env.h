// Process environment: product identity, the heap report, and environment
// variables read and written in UTF-8 with a fallback to the installation's
// registry key (Windows; elsewhere the key is always missing).
//
// Narrow strings hold UTF-8; the platform's UTF-16 forms never appear here.
// A variable set to the empty text counts as absent. Only the
// getenv_check_registry_* family falls back to the registry key. Neither the
// environment writes nor the product strings (filled on first use) are
// synchronised: set them before starting threads.
//
// Start with getenv_check_registry_kstring for settings and
// get_heap_info_string for a memory line in a log.
//
// Example:
//   qorin::putEnvKstring("QORIN_DEMO", "ä");  qorin::getEnvKstring("QORIN_DEMO") => "ä"
//   qorin::getEnvKstring("NOT_SET")                     => ""
//   qorin::get_product_name()                           => "Torvo"
#pragma once

#include <qorin/debug.h>
#include <qorin/export.h>
#include <qorin/fs.h>

#include <cstdint>
#include <list>
#include <stdexcept>
#include <string>
#include <vector>

namespace qorin {

// ---------------------------------------------------------------------------
// Product identity
// ---------------------------------------------------------------------------

// The product's name and version text. Both start empty; a query that finds
// its string empty fills both with the defaults ("Torvo", "4.10") unless
// initialize_product_and_ver has set them. Not synchronised: make the first
// call before starting threads.
//
// Example:
//   get_product_name()    => "Torvo"
//   get_product_version() => "4.10"
//   initialize_product_and_ver("Demo", "1.5"); get_product_name() => "Demo"
QORIN_EXPORT std::string get_product_name();
QORIN_EXPORT std::string get_product_version();
QORIN_EXPORT void initialize_product_and_ver(const std::string& name, const std::string& version);

// A process-wide mark that the GUI toolkit's application name has been set.
// False at start; nothing clears it once set.
QORIN_EXPORT void mark_qt_app_name_as_initialized();
QORIN_EXPORT bool is_qt_app_name_marked_as_initialized();

// ---------------------------------------------------------------------------
// Heap report
// ---------------------------------------------------------------------------

// Statistics of the process heap.
//
// Windows: a walk of the process heap; every entry (busy, free, region,
// uncommitted range) adds its data size to `size`, its overhead bytes to
// `overhead` and 1 to `count`.
//
// glibc: there is no walk, so the figures come from mallinfo2():
//   size     = uordblks + hblkhd   bytes in use (arena chunks, mapped blocks)
//   overhead = fordblks            the rest of the arena; mapped blocks are
//                                  wholly in use, so size + overhead is all
//                                  the allocator holds (arena + hblkhd)
//   count    = ordblks + smblks + hblks
//                                  the chunks glibc counts: free chunks and
//                                  mapped blocks (it keeps no count of busy
//                                  arena chunks)
struct HeapInfo {
  std::uint64_t size = 0;
  std::uint64_t overhead = 0;
  std::uint64_t count = 0;
};

// Throws std::runtime_error "failed to lock" or "heapwalk failed" (Windows).
// Note: after "heapwalk failed" the heap stays locked; callers rely on seeing
// the failure before anything else can touch the heap.
QORIN_EXPORT HeapInfo get_heap_size();

// One line of heap statistics, counts in units of 1024 entries and sizes in
// whole MB (truncated). Never throws: any failure gives
// "Error getting heap information".
//
// Example:
//   {size 3 MB, overhead 1.5 MB, count 1023}
//     => "Heap Count = 0 Kitems  Size = 3 MB  Overhead = 1 MB   Total = 4 MB"
QORIN_EXPORT std::string get_heap_info_string();

// ---------------------------------------------------------------------------
// Environment variables
// ---------------------------------------------------------------------------

// Reads an environment variable. A variable set to the empty text counts as
// absent, deliberately: Windows cannot tell the two apart.
//
// Example:
//   putEnvKstring("X", "Grüße ✓"); getEnvKstringAllowEmpty("X", &v) => true, v = "Grüße ✓"
//   putEnvKstring("X", "");        getEnvKstringAllowEmpty("X", &v) => false, v unchanged
QORIN_EXPORT bool getEnvKstringAllowEmpty(const std::string& name, std::string* value);

// The variable's value, or "" when it is absent.
QORIN_EXPORT std::string getEnvKstring(const std::string& name);

// Sets a variable in the process environment. Any failure, whatever its
// cause, throws std::bad_alloc; callers have always caught it as such.
// Not synchronised with concurrent readers of the environment.
QORIN_EXPORT void putEnvKstring(const std::string& name, const std::string& value);

// Looks `name` up only in the installation's registry key
// HKEY_LOCAL_MACHINE\SOFTWARE\Ambrosyn\Torvo\4.10\qoenv. The key is opened
// once per process, on the first call; when that fails every later call
// answers false without trying again. A value is cut at its first carriage
// return or line feed. Platforms without a registry always answer false.
//
// Example:
//   value "C:\data\r\nrest" => true, *value = "C:\data"
QORIN_EXPORT bool getenv_from_registry_only(const std::string& name, std::string* value);

// The environment first (getEnvKstringAllowEmpty), then the registry key.
QORIN_EXPORT bool getenv_check_registry_kstring_allow_empty(const std::string& name, std::string* value);

// The same two steps; "" when neither has the name.
QORIN_EXPORT std::string getenv_check_registry_kstring(const std::string& name);

// The same two steps for callers that want a C string: null when neither has
// the name, else the value in a per-thread buffer that stays valid until the
// same thread calls this function again.
QORIN_EXPORT const char* getenv_check_registry_legacy(const char* name);

// ---------------------------------------------------------------------------
// Registry
// ---------------------------------------------------------------------------

// The roots a registry key is opened under: HKEY_LOCAL_MACHINE and
// HKEY_CURRENT_USER.
enum class RegistryRoot { local_machine, current_user };

// A registry failure other than a missing key or value; the message names
// the key and carries the system's text. Caught as std::runtime_error or as
// MoreInfoForException, so rethrowMessage adds context to it in place.
class QORIN_EXPORT RegistryError : public std::runtime_error, public MoreInfoForException {
 public:
  explicit RegistryError(const std::string& message);
  ~RegistryError() override;
};

class QORIN_EXPORT KeyNotFound : public RegistryError {
 public:
  explicit KeyNotFound(const std::string& message);
  ~KeyNotFound() override;
};

class QORIN_EXPORT ValueNotFound : public RegistryError {
 public:
  explicit ValueNotFound(const std::string& message);
  ~ValueNotFound() override;
};

// A registry key open for reading (KEY_READ), closed when the object goes.
// Names and values are UTF-8; a value name "" is the key's default value.
// On platforms without a registry every key is missing.
//
// Example:
//   RegistryKey key(RegistryRoot::local_machine, "SOFTWARE\\Ambrosyn\\Torvo\\4.10\\qoenv");
//   key.get_string("VANTREL_DIR") => "C:\\Torvo"
//   key.get_dword("Missing")      => throws ValueNotFound
//       "Registry value \"Missing\" not found in HKEY_LOCAL_MACHINE\\SOFTWARE\\...\\qoenv"
//   RegistryKey(RegistryRoot::current_user, "Nope") => throws KeyNotFound
//       "Registry key not found: HKEY_CURRENT_USER\\Nope"
//   on Linux: "Registry key not found: HKEY_CURRENT_USER\\Nope (there is no registry on this platform)"
class QORIN_EXPORT RegistryKey {
 public:
  // Throws KeyNotFound, or RegistryError (for example access denied).
  RegistryKey(RegistryRoot root, const std::string& path);
  ~RegistryKey();
  RegistryKey(RegistryKey&& other) noexcept;
  RegistryKey& operator=(RegistryKey&& other) noexcept;
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;

  // A REG_SZ or REG_EXPAND_SZ value (not expanded), up to its first NUL.
  // Throws ValueNotFound; RegistryError for any other type.
  std::string get_string(const std::string& name) const;
  // A REG_DWORD value. Throws ValueNotFound; RegistryError for any other type.
  std::uint32_t get_dword(const std::string& name) const;
  // Names in the registry's own order.
  std::vector<std::string> value_names() const;
  std::vector<std::string> subkey_names() const;
  // The root's name and the path: "HKEY_LOCAL_MACHINE\\SOFTWARE\\...".
  const std::string& full_path() const { return full_path_; }

 private:
  void* key_ = nullptr;  // an HKEY
  std::string full_path_;
};

// ---------------------------------------------------------------------------
// Command line and installation directory
// ---------------------------------------------------------------------------

// The process's arguments as UTF-8 strings owned by the object, and the
// running executable. On Windows main()'s narrow argv is in the ANSI code
// page, so the arguments are taken again from the wide command line; on
// POSIX they are copied as given (they already are the bytes the user typed).
// Not synchronised: initialise on one thread at start-up.
//
// Example (Windows, started as «app.exe Grüße "a b"» from C:\Tools):
//   CommandLineBase line; line.initialize_args(argc, argv);
//   line.argc()    => 3
//   line.argv()[0] => "C:\\Tools\\app.exe"     (always the full path)
//   line.argv()[1] => "Grüße"                  (UTF-8)
//   line.take_arg(2) => "a b"; line.argc() => 2
//   line.remove_arg(0) => throws std::runtime_error "Internal error: Invalid argument index"
//   line.take_arg(5)   => throws std::runtime_error "Argument not specified"
class QORIN_EXPORT CommandLineBase {
 public:
  CommandLineBase();
  CommandLineBase(const CommandLineBase&) = delete;
  CommandLineBase& operator=(const CommandLineBase&) = delete;

  // Nothing in the base; CommandLine finds the installation here. The host
  // program calls it if it wants failures early; the installation getters
  // need no such call.
  virtual void perform_app_specific_initialization();
  // Writes "Error setting up command line: " + message to standard error,
  // with no line end added.
  virtual void report_error(const std::string& message);
  virtual ~CommandLineBase();

  // Builds the UTF-8 vector and replaces argument 0 by the executable's full
  // path. Failing to find the executable is reported through report_error,
  // never thrown; the arguments stay initialised. An unpaired surrogate in
  // a Windows argument throws utf8::invalid_utf16.
  void initialize_args(int argc, const char* const* argv);
  void initialize_args_if_not_already_initialized(int argc, const char* const* argv);

  // Both throw std::runtime_error "Internal error: Command line was not
  // initialized." before initialize_args. argv() ends with a null pointer.
  int argc() const;
  char** argv() const;

  // The argument at `index`, removed from the vector (later ones move down).
  std::string take_arg(int index);
  void remove_arg(int index);
  void save_command_line_utf8(std::vector<std::string>& arguments) const;

  // Found on first use. The full path is absolute and normalised; the
  // directory is its parent. Throw std::runtime_error starting with "Could
  // not find executable location." when the platform cannot tell.
  const Path& get_exe_full_path();
  const Path& get_exe_directory();

 private:
  void initialize_path_to_executable();
  void copy_args(int argc, const char* const* argv);
  void set_args(std::vector<std::string> arguments);
  void fix_argv0();
  void check_initialized() const;
  void check_index(int index) const;

  // Every string and vector ever handed out stays until the object goes: a
  // list, because argv's pointers must never move.
  std::list<std::string> saved_;
  std::vector<char*> argv_;  // into saved_, then a null pointer
  std::list<std::vector<char*>> retired_;
  Path exe_full_path_;
  Path exe_directory_;
};

// CommandLineBase plus the product installation: the directory named by
// VANTREL_DIR (environment first, then the installation's registry key), or
// else the parent of the executable's directory, which must be called "bin".
// The "bin" test compares the way Path does: ignoring case on Windows
// (CharUpperW), exactly on POSIX. A directory found through the executable
// is written to VANTREL_DIR so that child processes use the same
// installation.
//
// Example (no VANTREL_DIR):
//   started as D:\prod\BIN\app.exe => get_installation_directory() == "D:\\prod",
//                                     get_bin_directory() == "D:\\prod\\BIN"
//   started as D:\prod\tools\app.exe => throws std::runtime_error
//     "This program (D:\\prod\\tools\\app.exe) is not in the correct location.\n\n"
//     "It must be in the bin directory of the product installation."
//   VANTREL_DIR=D:\gone => throws std::runtime_error
//     "VANTREL_DIR is set to an invalid directory.  \"D:\\gone\" does not exist."
//     (two blanks after the full stop, as callers match it)
//     and the same for a VANTREL_DIR that names a file: it must be a directory
//   VANTREL_DIR=prod (relative) => completed against the current directory
//     when first read, and kept so: a later chdir does not move it
class QORIN_EXPORT CommandLine : public CommandLineBase {
 public:
  CommandLine();
  ~CommandLine() override;

  // The process's one CommandLine, made on first call.
  static CommandLine* get_command_line();

  void perform_app_specific_initialization() override;
  void ensure_vantrel_dir_is_set();
  const Path& get_installation_directory();
  const Path& get_bin_directory();
  // Ignores VANTREL_DIR from now on; recomputes a directory already found.
  void force_vantrel_dir_to_exe_location(bool force);

  // VANTREL_DIR as it was when the object was made ("" when absent).
  const std::string& get_original_vantrel_dir_env_value() const { return original_env_value_; }
  const std::string& get_original_vantrel_dir_reg_value() const { return original_reg_value_; }

  // Stored for the host program; it changes no check.
  void set_is_test_app(bool is_test_app) { is_test_app_ = is_test_app; }
  bool is_test_app() const { return is_test_app_; }

 private:
  Path installation_directory_;
  Path bin_directory_;
  std::string original_env_value_;
  std::string original_reg_value_;
  bool is_test_app_ = false;
  bool forced_to_exe_location_ = false;
};

// The same queries on CommandLine::get_command_line().
QORIN_EXPORT const Path& get_exe_directory();
QORIN_EXPORT const Path& get_exe_full_path();
QORIN_EXPORT const Path& get_bin_directory();
QORIN_EXPORT const Path& get_installation_directory();

// Initialises the singleton's arguments (once) and points *argc and *argv at
// its UTF-8 vector, which lives until static destruction:
//   int main(int argc, char** argv) { qorin::fix_command_line_utf8(&argc, &argv); ... }
QORIN_EXPORT void fix_command_line_utf8(int* argc, char*** argv);

}  // namespace qorin
