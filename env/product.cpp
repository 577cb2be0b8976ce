#include <qorin/env.h>

#include "env/product_defaults.h"

#include <fmt/format.h>

#include <cstdlib>

namespace qorin {

namespace {

// Filled on first use without a lock: the host makes its first call before it
// starts threads.
std::string& product_name() {
  static std::string name;
  return name;
}
std::string& product_version() {
  static std::string version;
  return version;
}
bool qt_app_name_marked = false;

void fill_defaults() {
  product_name() = detail::default_product_name();
  product_version() = detail::default_product_version();
}

}  // namespace

namespace detail {

std::string default_product_name() { return "Torvo"; }

std::string default_product_version() {
  // Kept as text, as the build stamps it.
  const double quotient = std::atof("410") / 100;
  return quotient != 0 ? fmt::format("{:1.2f}", quotient) : "2.7";
}

}  // namespace detail

std::string get_product_name() {
  if (product_name().empty()) fill_defaults();
  return product_name();
}

std::string get_product_version() {
  if (product_version().empty()) fill_defaults();
  return product_version();
}

void initialize_product_and_ver(const std::string& name, const std::string& version) {
  product_name() = name;
  product_version() = version;
}

void mark_qt_app_name_as_initialized() { qt_app_name_marked = true; }

bool is_qt_app_name_marked_as_initialized() { return qt_app_name_marked; }

}  // namespace qorin
