"""to_mks against Pint's conversion of the same quantity to the type's MKS
unit, for every unit of the catalogue that Pint also knows."""
import pint
import pytest

import qorin

# Our unit name => Pint's spelling, where it differs or Pint reads it
# otherwise (Pint's «mil» is an angle; ours is a thousandth of an inch).
PINT_NAME = {
    "mOhm": "milliohm", "Ohm": "ohm", "kOhm": "kiloohm", "MOhm": "megaohm", "GOhm": "gigaohm", "TOhm": "teraohm",
    "mil": "thou", "in": "inch",
    "fsec": "fs", "psec": "ps", "nsec": "ns", "usec": "us", "msec": "ms", "sec": "s",
    "deg": "degree", "Celsius": "degC",
}
# The type's MKS unit as Pint spells it. Conversion goes there, not to Pint's
# base units, which are radians, kelvin and plain ratios for deg, degC and dB.
PINT_MKS = {
    "freq": "Hz", "res": "ohm", "cond": "S", "ind": "H", "cap": "F", "lng": "meter", "time": "s", "ang": "degree",
    "power": "W", "volt": "V", "cur": "A", "dist": "meter", "temp": "degC", "dbg": "dB", "datarate": "bps",
}
# Units Pint does not know (this Pint has no percent).
PINT_LACKS = {("lng", "bad unit"), ("pct", "%")}
# The one known difference: our mile is 1609.34 m, the international mile 1609.344 m.
KNOWN_DIFFERENCES = {("dist", "mi"): 1609.34 / 1609.344}


@pytest.fixture(scope="module")
def registry():
    units = pint.UnitRegistry()
    units.define("decibelwatt = watt; logbase: 10; logfactor: 10 = dBW")  # Pint has dBm only
    return units


def catalogue():
    return [(t.name, u.name) for t in qorin.unit_types() for u in t.units]


def test_pint_lacks_exactly_the_listed_units(registry):
    lacking = set()
    for type_name, unit in catalogue():
        try:
            registry.Unit(PINT_NAME.get(unit, unit))
        except Exception:  # Pint raises several kinds for a name it cannot read
            lacking.add((type_name, unit))
    assert lacking == PINT_LACKS
    assert {t.name for t in qorin.unit_types() if t.units} == set(PINT_MKS) | {"pct"}


@pytest.mark.parametrize("type_name, unit", [c for c in catalogue() if c not in PINT_LACKS])
def test_to_mks_agrees_with_pint(registry, type_name, unit):
    for value in (-7.5, 1.0, 325.0, 1e-4):
        ours = qorin.to_mks(value, unit, unit_type=type_name)
        theirs = registry.Quantity(value, PINT_NAME.get(unit, unit)).to(PINT_MKS[type_name]).magnitude
        theirs *= KNOWN_DIFFERENCES.get((type_name, unit), 1.0)
        assert ours == pytest.approx(theirs, rel=1e-12, abs=0.0), (value, unit)
