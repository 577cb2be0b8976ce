// The unit catalogue: eighteen quantities in a fixed order that lookups,
// get_legacy_unit and stored DMUnitE codes depend on.
#include <qorin/units.h>

namespace qorin::units {

UnitMultiplier::UnitMultiplier(const char* name, double multiplier, char suffix)
    : name_(name), multiplier_(multiplier), suffix_(suffix) {}

// The index is the catalogue position, which the legacy code fixes.
UnitType::UnitType(DMUnitE legacy, const char* unit_type_name, const char* description,
                   const char* mks_unit, bool uses_scale_factors,
                   const std::vector<UnitMultiplier>& multipliers)
    : unit_index_(static_cast<int>(legacy) + 2),
      legacy_(legacy),
      uses_scale_factors_(uses_scale_factors),
      unit_type_name_(unit_type_name),
      description_(description),
      mks_unit_(mks_unit),
      multipliers_(multipliers) {}

namespace {

constexpr bool kScaled = true;
constexpr bool kUnscaled = false;
constexpr char kNoSuffix = 0;

std::vector<UnitType> build_catalogue() {
  return {
      {DM_UNIT_STRING, "string", "String", "", kUnscaled, {}},
      {DM_UNIT_UNITLESS, "num", "Unitless", "", kUnscaled, {}},
      {DM_UNIT_FREQUENCY, "freq", "Frequency", "Hz", kScaled,
       {{"Hz", 1.0, kNoSuffix}, {"kHz", 1e3, 'k'}, {"MHz", 1e6, 'M'}, {"GHz", 1e9, 'G'},
        {"THz", 1e12, 'T'}, {"PHz", 1e15, 'P'}}},
      {DM_UNIT_RESISTANCE, "res", "Resistance", "Ohm", kScaled,
       {{"mOhm", 1e-3, 'm'}, {"Ohm", 1.0, kNoSuffix}, {"kOhm", 1e3, 'k'}, {"MOhm", 1e6, 'M'},
        {"GOhm", 1e9, 'G'}, {"TOhm", 1e12, 'T'}}},
      {DM_UNIT_CONDUCTANCE, "cond", "Conductance", "S", kScaled,
       {{"pS", 1e-12, 'p'}, {"nS", 1e-9, 'n'}, {"uS", 1e-6, 'u'}, {"mS", 1e-3, 'm'},
        {"S", 1.0, kNoSuffix}}},
      {DM_UNIT_INDUCTANCE, "ind", "Inductance", "H", kScaled,
       {{"fH", 1e-15, 'f'}, {"pH", 1e-12, 'p'}, {"nH", 1e-9, 'n'}, {"uH", 1e-6, 'u'},
        {"mH", 1e-3, 'm'}, {"H", 1.0, kNoSuffix}}},
      {DM_UNIT_CAPACITANCE, "cap", "Capacitance", "F", kScaled,
       {{"fF", 1e-15, 'f'}, {"pF", 1e-12, 'p'}, {"nF", 1e-9, 'n'}, {"uF", 1e-6, 'u'},
        {"mF", 1e-3, 'm'}, {"F", 1.0, kNoSuffix}}},
      // "bad unit" stays first and meter/ft also appear under dist: stored
      // designs and name lookups (first match wins) depend on both.
      {DM_UNIT_LENGTH, "lng", "Length", "meter", kScaled,
       {{"bad unit", 1.0, kNoSuffix}, {"mil", 2.54e-5, kNoSuffix}, {"in", 0.0254, kNoSuffix},
        {"um", 1e-6, 'u'}, {"mm", 1e-3, 'm'}, {"cm", 0.01, 'c'}, {"meter", 1.0, kNoSuffix},
        {"ft", 0.3048, kNoSuffix}, {"nm", 1e-9, 'n'}}},
      {DM_UNIT_TIME, "time", "Time", "sec", kScaled,
       {{"fsec", 1e-15, 'f'}, {"psec", 1e-12, 'p'}, {"nsec", 1e-9, 'n'}, {"usec", 1e-6, 'u'},
        {"msec", 1e-3, 'm'}, {"sec", 1.0, kNoSuffix}}},
      {DM_UNIT_ANGLE, "ang", "Angle", "deg", kUnscaled, {{"deg", 1.0, kNoSuffix}}},
      // dBm and dBW are converted logarithmically; their factor is never used.
      {DM_UNIT_POWER, "power", "Power", "W", kScaled,
       {{"pW", 1e-12, 'p'}, {"nW", 1e-9, 'n'}, {"uW", 1e-6, 'u'}, {"mW", 1e-3, 'm'},
        {"W", 1.0, kNoSuffix}, {"kW", 1e3, 'k'}, {"dBm", 0.0, kNoSuffix},
        {"dBW", 0.0, kNoSuffix}}},
      {DM_UNIT_VOLTAGE, "volt", "Voltage", "V", kScaled,
       {{"fV", 1e-15, 'f'}, {"pV", 1e-12, 'p'}, {"nV", 1e-9, 'n'}, {"uV", 1e-6, 'u'},
        {"mV", 1e-3, 'm'}, {"V", 1.0, kNoSuffix}, {"kV", 1e3, 'k'}}},
      {DM_UNIT_CURRENT, "cur", "Current", "A", kScaled,
       {{"fA", 1e-15, 'f'}, {"pA", 1e-12, 'p'}, {"nA", 1e-9, 'n'}, {"uA", 1e-6, 'u'},
        {"mA", 1e-3, 'm'}, {"A", 1.0, kNoSuffix}, {"kA", 1e3, 'k'}}},
      {DM_UNIT_DISTANCE, "dist", "Distance", "meter", kScaled,
       {{"meter", 1.0, kNoSuffix}, {"km", 1e3, kNoSuffix}, {"ft", 0.3048, kNoSuffix},
        {"mi", 1609.34, kNoSuffix}, {"nmi", 1852.0, kNoSuffix}}},
      // Temperatures are not offset-converted and decibels not converted at all.
      {DM_UNIT_TEMPERATURE, "temp", "Temperature", "Celsius", kUnscaled,
       {{"Celsius", 1.0, kNoSuffix}}},
      {DM_UNIT_DB, "dbg", "dB", "dB", kScaled, {{"dB", 1.0, kNoSuffix}}},
      {DM_UNIT_DATARATE, "datarate", "Datarate", "bps", kScaled,
       {{"bps", 1.0, kNoSuffix}, {"kbps", 1e3, 'k'}, {"Mbps", 1e6, 'M'}, {"Gbps", 1e9, 'G'},
        {"Tbps", 1e12, 'T'}, {"Pbps", 1e15, 'P'}}},
      {DM_UNIT_PERCENT, "pct", "Percent", "%", kScaled, {{"%", 0.01, '%'}}},
  };
}

// Forces construction while the library loads, so the catalogue exists before
// any exported function runs; the function-local static also serves static
// initialisers elsewhere that might run first.
const std::vector<UnitType>& catalogue_at_load = get_all_units();

}  // namespace

const std::vector<UnitType>& get_all_units() {
  static const std::vector<UnitType> catalogue = build_catalogue();
  return catalogue;
}

const UnitType* get_legacy_unit(DMUnitE e) {
  const std::vector<UnitType>& all = get_all_units();
  // In 64 bits so that codes near INT_MAX do not wrap.
  const long long position = static_cast<long long>(e) + 2;
  if (position < 0 || position >= static_cast<long long>(all.size())) return nullptr;
  return &all[static_cast<std::size_t>(position)];
}

const UnitType* find_unit_type(const std::string& name) {
  for (const UnitType& type : get_all_units()) {
    if (type.unit_type_name() == name) return &type;
  }
  return nullptr;
}

}  // namespace qorin::units
