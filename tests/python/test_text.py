"""Number text and name encoding, and the promise that no str of any kind
crashes the interpreter or lets a C++ exception out."""
import random

import pytest

import qorin


@pytest.mark.parametrize("text, number", [(" 2.5e3", 2500.0), ("5.", 5.0), ("-0", -0.0), ("1e999", float("inf")),
                                          ("1.5\n", 1.5), ("0.1", 0.1)])
def test_to_double_reads_whole_decimal_texts(text, number):
    assert qorin.is_valid_number(text)
    assert qorin.to_double(text) == number


@pytest.mark.parametrize("text", ["3 GHz", ".", "1e+", "inf", "nan", "0x10", "1,5", "", "1\0", "\ud800"])
def test_to_double_refuses_with_the_library_message(text):
    assert not qorin.is_valid_number(text)
    with pytest.raises(ValueError, match="^Expected a string containing a number$"):
        qorin.to_double(text)


@pytest.mark.parametrize("x, precision, text", [(0.1, 6, "0.1"), (1e20, 6, "1e+20"), (1e-11, 6, "1e-11"),
                                                (0.1, 17, "0.10000000000000001"), (2.5, 0, "2"), (123456789.0, 6, "1.23457e+08"),
                                                (float("inf"), 6, "inf"), (-0.0, 6, "-0"), (1.0, -1, "1")])
def test_format_double_writes_printf_g(x, precision, text):
    assert qorin.format_double(x, precision) == text


@pytest.mark.parametrize("name, prefix, encoded", [("", "p_", "p_"), ("freq1", "v", "vfreq1"), ("1st", "v", "vZ_Z1st"),
                                                   ("a.b c", "", "a_2eb_20c"), ("_x", "v", "vZ_Z__x")])
def test_names_encode_and_decode(name, prefix, encoded):
    assert qorin.encode_name(name, prefix=prefix) == encoded
    assert qorin.decode_name(encoded, prefix=prefix) == name


@pytest.mark.parametrize("text, message", [
    ("q_2E", "cannot decode 'q_2E' as a variable name"),           # upper-case hex
    ("xab", "cannot decode 'xab' as a variable name"),             # the prefix "y" is missing
    ("Z_Z_c3", "'Z_Z_c3' decodes to bytes that are not UTF-8"),    # half of a two-byte sequence
])
def test_decode_name_refuses(text, message):
    with pytest.raises(ValueError) as raised:
        qorin.decode_name(text, prefix="y" if text == "xab" else "")
    assert str(raised.value) == message


def test_names_are_encoded_from_utf8_bytes():
    # Bytes from 0x80 up encode as negative numbers, which do not decode.
    assert qorin.encode_name("é") == "Z_Z_-3d_-57"
    with pytest.raises(ValueError):
        qorin.decode_name("Z_Z_-3d_-57")
    with pytest.raises(ValueError, match="not valid Unicode"):
        qorin.encode_name("\ud800")


def hostile_texts():
    rng = random.Random(21)
    alphabet = ["\0", "\ud800", "\udfff", "\U0001f600", "é", " ", "{", "}", "(", ")", "'", '"', "\\", "+/-", "%",
                "opt{", "stat{", "no", "to", "by", "1", "e", "k", "pF", "dbmtow(", "file{", "\t", "\n"]
    texts = ["", "\0", "\ud800", "x" * 100_000, "(" * 5000, "1 opt{" + " 1 to 2" * 2000 + " }"]
    texts += ["".join(rng.choice(alphabet) for _ in range(rng.randrange(1, 30))) for _ in range(3000)]
    return texts


def test_no_str_crashes_or_escapes_as_a_cpp_exception():
    texts = hostile_texts()
    for type_name in ("cap", "power", None):
        batch = qorin.canonicalize(texts, unit_type=type_name)
        for text, canonical in zip(texts, batch):
            a = qorin.Annotation(text, unit_type=type_name)
            assert a.canonical == canonical
            # Whatever the canonical text keeps, it keeps unchanged: lone
            # surrogates, NUL and other non-ASCII characters go through whole.
            assert {c for c in canonical if not c.isascii() or c == "\0"} <= set(text)
            qorin.Value(text, unit_type=type_name)
    for text in texts[:500]:
        assert isinstance(qorin.is_valid_number(text), bool)
        for call in (qorin.to_double, qorin.decode_name, qorin.encode_name, lambda t: qorin.to_mks(1, t)):
            try:
                call(text)
            except (ValueError, KeyError):
                pass
    assert qorin.Value("\ud800 pF", unit_type="cap").canonical == "\ud800 pF"
    assert qorin.canonicalize("1\0 opt{ 1 to 2 }") == "1\0 opt{ 1 to 2 }"
