// Reads an annotation typed for a capacitance, converts its nominal value and
// writes the annotation back.
#include <qorin/debug.h>
#include <qorin/parser.h>
#include <qorin/text.h>
#include <qorin/units.h>

#include <iostream>

int main() {
  namespace units = qorin::units;
  try {
    const units::UnitType* capacitance = units::find_unit_type("cap");

    // Parsing never throws: bad text is marked invalid and kept as typed.
    qorin::parser::ParamItemParser item;
    item.set_unit_type(capacitance);
    item.parse("10 pF  opt{ 1 pF to 20 pF } stat{ gauss +/- 5 % }", true);
    if (!item.is_valid()) return 1;
    item.reformat();
    std::cout << "canonical: " << item.get_combined_string() << "\n";

    // The nominal in the type's MKS unit, the farad.
    double farads = units::convert_parm_value_to_mks_units(
        qorin::toDouble_or_throw(item.nominal()), item.nominal_units());
    std::cout << "nominal:   " << qorin::fromDouble(farads, qorin::general, 6, 0) << " F\n";

    // The nominal rescaled to nF and written back; the options keep their units.
    qorin::parser::ParserValue nominal = item.get_nominal();
    nominal.scale_value_to_new_unit(units::find_unit_of_type(capacitance, "nF"));
    item.set_nominal(nominal);
    std::cout << "rescaled:  " << item.get_combined_string() << "\n";
  } catch (...) {
    qorin::reportException("", "");  // stderr: "Error: <context>: <reason>"
    return 1;
  }
  return 0;
}
