// The product identity built into this library, before any host program
// renames it with initialize_product_and_ver. The registry fallback's key is
// named after these, whatever the host chose.
#pragma once

#include <string>

namespace qorin::detail {

// "Torvo"
std::string default_product_name();

// The built-in version number (times 100) written as "%1.2f" of its quotient,
// or "2.7" should that quotient be 0.
//
// Example:
//   default_product_version() => "4.10"
std::string default_product_version();

}  // namespace qorin::detail
