// POSIX only: there is no registry; every key is missing.
#include "env/registry_os.h"

namespace qorin::detail::registry {

unsigned long open_key(RegistryRoot, const std::string&, Key* key) {
  *key = nullptr;
  return kNoRegistry;
}

void close_key(Key) {}

unsigned long query_value(Key, const std::string&, Value*) { return kNoRegistry; }

unsigned long list_names(Key, Names, std::vector<std::string>*) { return kNoRegistry; }

}  // namespace qorin::detail::registry
