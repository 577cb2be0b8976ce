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

#include <cstdint>
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

}  // namespace qorin
