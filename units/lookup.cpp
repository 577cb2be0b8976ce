// Unit lookup by exact name: the catalogue is scanned front to back and the
// first match wins, which is what sends "meter" and "ft" to the length type.
#include <qorin/units.h>

#include <string_view>

namespace qorin::units {

namespace {

const UnitMultiplier* find_in_type(const UnitType& type, std::string_view name) {
  for (const UnitMultiplier& multiplier : type.multipliers()) {
    const std::string& candidate = multiplier.unit_name();
    // Most names differ in length or first byte; skip the memcmp call for them.
    if (candidate.size() == name.size() && !name.empty() && candidate[0] == name[0] &&
        candidate == name) {
      return &multiplier;
    }
  }
  return nullptr;
}

}  // namespace

UnitAndMultiplier find_unit(const char* name) {
  if (name == nullptr) return {};
  const std::string_view wanted(name);
  for (const UnitType& type : get_all_units()) {
    if (const UnitMultiplier* multiplier = find_in_type(type, wanted)) return {&type, multiplier};
  }
  return {};
}

std::vector<const UnitType*> find_unit_types_with(const std::string& name) {
  std::vector<const UnitType*> types;
  for (const UnitType& type : get_all_units()) {
    if (find_in_type(type, name) != nullptr) types.push_back(&type);
  }
  return types;
}

UnitAndMultiplier find_unit_of_type(const UnitType* type, const char* name) {
  if (const UnitMultiplier* multiplier = find_in_type(*type, name)) return {type, multiplier};
  return {};
}

const std::string& UnitAndMultiplier::unit_name() const {
  static const std::string no_name;
  return multiplier_ != nullptr ? multiplier_->unit_name() : no_name;
}

bool UnitAndMultiplier::multiplier_matches_type() const {
  if (multiplier_ == nullptr) return true;
  for (const UnitMultiplier& own : type_->multipliers()) {
    if (&own == multiplier_) return true;
  }
  return false;
}

}  // namespace qorin::units
