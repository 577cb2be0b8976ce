"""The unit catalogue and conversions as Python sees them."""
import numpy as np
import pytest

import qorin


def test_catalogue_in_order_with_its_units():
    assert [t.name for t in qorin.unit_types()] == [
        "string", "num", "freq", "res", "cond", "ind", "cap", "lng", "time", "ang",
        "power", "volt", "cur", "dist", "temp", "dbg", "datarate", "pct"]
    cap = qorin.unit_type("cap")
    assert (cap.name, cap.mks_unit, cap.legacy_code) == ("cap", "F", 4)
    assert [u.name for u in cap.units] == ["fF", "pF", "nF", "uF", "mF", "F"]
    pf = cap.unit("pF")
    assert (pf.name, pf.factor, pf.scale_letter) == ("pF", 1e-12, "p")
    # Wrappers made apart compare and hash as the catalogue entry they show.
    assert pf.unit_type == cap and {cap: 1}[qorin.unit_types()[6]] == 1
    assert pf == qorin.unit_type("cap").units[1] and pf != qorin.unit_type("cap").units[0]
    assert repr(pf) == "Unit('pF', unit_type='cap')" and repr(cap) == "UnitType('cap')"
    assert qorin.__version__ == "0.1.0"


@pytest.mark.parametrize("call, message", [
    (lambda: qorin.unit_type("capacity"), 'unknown unit type "capacity"'),
    (lambda: qorin.unit_type("cap").unit("Hz"), 'unit type cap has no unit "Hz"'),
    (lambda: qorin.to_mks(1, "pf"), 'unknown unit "pf"'),
    # The lookups read C strings: a NUL must not cut the name short.
    (lambda: qorin.to_mks(1, "pF\0x"), 'unknown unit "pF\0x"'),
    (lambda: qorin.from_mks(1, "pF", unit_type="freq"), 'unit type freq has no unit "pF"'),
    (lambda: qorin.convert(1, "mi", "ft", unit_type="lng"), 'unit type lng has no unit "mi"'),
    (lambda: qorin.Value("1", unit_type="Cap"), 'unknown unit type "Cap"'),
])
def test_unknown_names_raise_key_error(call, message):
    with pytest.raises(KeyError) as raised:
        call()
    assert raised.value.args[0] == message


@pytest.mark.parametrize("value, unit, mks", [
    (2, "GHz", 2e9), (10, "pF", 1e-11), (1.5, "mOhm", 1.5e-3), (1, "mil", 2.54e-5),
    (30, "dBm", 1.0), (-30, "dBm", 1e-6), (10, "dBW", 10.0), (0, "dBW", 1.0),
    (1, "mi", 1609.34), (5, "%", 0.05), (-40, "Celsius", -40.0), (90, "deg", 90.0),
])
def test_to_mks_and_back(value, unit, mks):
    assert qorin.to_mks(value, unit) == pytest.approx(mks, rel=1e-15)
    assert qorin.from_mks(qorin.to_mks(value, unit), unit) == pytest.approx(value, rel=1e-12, abs=1e-12)
    assert type(qorin.to_mks(value, unit)) is float


@pytest.mark.parametrize("mks, unit, message", [
    # No power unit represents zero or less, not even W.
    (0, "dBm", "0.0 (MKS W) cannot be represented in dBm"),
    (-1, "dBW", "-1.0 (MKS W) cannot be represented in dBW"),
    (0, "W", "0.0 (MKS W) cannot be represented in W"),
    # Values go on as floats: a small unit must not overflow one.
    (1e30, "pF", "1e+30 (MKS F) cannot be represented in pF"),
])
def test_unrepresentable_values_raise_value_error(mks, unit, message):
    with pytest.raises(ValueError, match=r"^" + message.replace("(", r"\(").replace(")", r"\)").replace("+", r"\+") + "$"):
        qorin.from_mks(mks, unit)
    with pytest.raises(ValueError):
        qorin.from_mks([1.0, mks], unit)


def test_float_guard_is_on_the_signed_value():
    assert qorin.from_mks(-1e30, "pF") == pytest.approx(-1e42)


def test_convert_picks_a_type_with_both_units():
    assert qorin.convert(1, "kHz", "Hz") == 1000.0
    assert qorin.convert(10, "dBm", "mW") == pytest.approx(10.0, rel=1e-15)
    # «ft» alone is lng, but only dist has «mi».
    assert qorin.convert(1, "mi", "ft") == pytest.approx(1609.34 / 0.3048, rel=1e-15)
    assert qorin.convert(1, "ft", "meter", unit_type="dist") == pytest.approx(0.3048)
    assert qorin.convert(1, qorin.unit_type("cap").unit("nF"), "pF") == pytest.approx(1000.0)
    with pytest.raises(ValueError, match="^cannot convert GHz to pF: no unit type has both$"):
        qorin.convert(1, "GHz", "pF")


def test_sequences_and_arrays_keep_their_shape():
    out = qorin.to_mks([[1, 2], [3, 4]], "kHz")
    assert isinstance(out, np.ndarray) and out.dtype == np.float64
    assert out.tolist() == [[1e3, 2e3], [3e3, 4e3]]
    source = np.arange(6, dtype=np.int32)[::2]  # converted, strided: copied, not changed
    assert qorin.convert(source, "GHz", "MHz").tolist() == [0.0, 2000.0, 4000.0]
    assert source.tolist() == [0, 2, 4]
    assert qorin.from_mks(np.array([1e-3, 1.0]), "dBm").tolist() == pytest.approx([0.0, 30.0])
    assert qorin.to_mks([], "pF").shape == (0,)
    with pytest.raises(TypeError):
        qorin.to_mks(["a"], "pF")
    with pytest.raises(TypeError):
        qorin.to_mks("1", "pF")


@pytest.mark.parametrize("unit, count", [("pF", 1_000_000), ("dBm", 20_000), ("mi", 20_000)])
def test_array_conversion_equals_the_scalar_calls(unit, count):
    values = np.random.default_rng(21).normal(0.0, 100.0, count)
    expected = np.array([qorin.to_mks(float(x), unit) for x in values])
    assert np.array_equal(qorin.to_mks(values, unit), expected)
    positive = np.abs(expected) + 1e-3
    assert np.array_equal(qorin.from_mks(positive, unit),
                          np.array([qorin.from_mks(float(x), unit) for x in positive]))
