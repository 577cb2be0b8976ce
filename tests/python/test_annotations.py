"""Values and annotations: the same answers as `qorin annotate --json`, and
the Python-side contract (None where a form has no value, no exceptions on
bad text, str and repr)."""
import json
from concurrent.futures import ThreadPoolExecutor
import os
import subprocess

import pytest

import qorin

CORPUS = {
    "cap": ["10 pF opt{ 1 pF to 20 pF } stat{ gauss +/- 5 % }", "10 pF  opt{ 1 to 2 by 0.1 }", "(a)*(b) pF",
            "(a+b) pF opt{ discrete 1 pF to 2 pF by 0.5 pF }", "x_1 noopt{ ppt 1 to 10 } tune{ 1 to 10 logScale }",
            "1 stat{ gauss +/- 5 % 7 }", "'q' doe{ +/- 10 % }", "file{ds1, 3} nF", "", "10 Opt{ 1 to 2 }",
            "1 stat{ distcompname = a b }", "1 opt{ 'a' }", "5 % tune{ 1 to 2 }"],
    "power": ["10 dbm opt{ 1 dBm to 20 dBm }", "dbmtow ( 10 ) doe{ 1 W to 2 W }", "-3 dBW", "1 mW stat{ uniform 1 to 2 }"],
    "freq": ["1 k", "2.5", "x_1 GHz tune{ 1 GHz to 2 GHz by 0.1 GHz }", "1kHz opt{ 1 to }"],
    None: ["10 pF", "25 deg opt{ 1 deg to 2 deg }", "5 Celsius", "3 bad", "1 mi", "1 %"],
}
CASES = [(type_name, text) for type_name, texts in CORPUS.items() for text in texts]


@pytest.fixture(scope="module")
def tool_reports():
    reports = {}
    for type_name, texts in CORPUS.items():
        where = ["--type", type_name] if type_name else ["--any-unit"]
        run = subprocess.run([os.environ["QORIN_TOOL"], "annotate", "--json", *where, "--", *texts],
                             capture_output=True, text=True, timeout=60)
        assert run.returncode in (0, 1), run.stderr
        lines = run.stdout.splitlines()
        assert len(lines) == len(texts)
        for text, line in zip(texts, lines):
            reports[(type_name, text)] = json.loads(line)
    return reports


def same_value(ours, theirs):
    assert (ours.value_text, ours.unit, ours.mks) == (theirs["value"], theirs["unit"], theirs["mks"])


@pytest.mark.parametrize("type_name, text", CASES)
def test_annotation_agrees_with_the_tool(tool_reports, type_name, text):
    theirs = tool_reports[(type_name, text)]
    ours = qorin.Annotation(text, unit_type=type_name)
    assert (ours.canonical, ours.valid) == (theirs["canonical"], theirs["valid"])
    assert ours.diagnostics == [(d["severity"], d["message"]) for d in theirs["diagnostics"]]
    assert (ours.unit_type.name if ours.unit_type else None) == theirs["unit_type"]
    same_value(ours.nominal, theirs["nominal"])
    assert ours.canonical.startswith(ours.nominal.canonical)
    assert len(ours.options) == len(theirs["options"])
    for option, report in zip(ours.options, theirs["options"]):
        assert (option.kind, option.text, option.enabled) == (report["kind"], report["text"], report["enabled"])
        assert option.sweep == (None if report["sweep"] == "invalid" else report["sweep"])
        for name in ("start", "stop", "step"):
            value = getattr(option, name)
            assert (value is None) == (name not in report)
            if value is not None:
                same_value(value, report[name])
                assert value.canonical == report[name]["text"]
    # A nominal is valid exactly when the tool has no warning about it.
    nominal_warning = any(m.startswith("nominal ") for _, m in ours.diagnostics)
    assert ours.nominal.valid == (not nominal_warning)
    assert qorin.canonicalize(text, unit_type=type_name) == ours.canonical


def test_value_reads_as_the_nominal():
    v = qorin.Value("10 pF", unit_type="cap")
    assert (v.valid, v.canonical, v.value_text, v.unit, v.number, v.mks) == (True, "10pF", "10", "pF", 10.0, 1e-11)
    assert (str(v), repr(v)) == ("10pF", "Value('10pF')")
    assert qorin.Value("10 pF").unit_type == qorin.unit_type("cap")  # no type given: the unit sets it
    # Options are no part of a value: the whole text is kept as typed.
    v = qorin.Value("1 opt{ 1 to 2 }", unit_type="cap")
    assert (v.valid, v.canonical, v.unit, v.number) == (False, "1 opt{ 1 to 2 }", None, None)
    assert qorin.Value("1e999 Hz").mks == float("inf")  # the tool's JSON shows null
    assert qorin.Value("x", unit_type="freq").mks is None and qorin.Value("2.5", unit_type="freq").mks == 2.5
    assert qorin.Value("10 dbm", unit_type="power").canonical == "dbmtow(10)"
    assert qorin.Value("10 dbm", unit_type="power", dbmtow=False).canonical == "10dBm"
    assert qorin.Value("25 deg").canonical == "25 deg"  # the plain form would hide the type


def test_annotation_kinds_and_sweep_forms():
    a = qorin.Annotation("10 pF opt{ 1 pF to 20 pF } nostat{ gauss +/- 5 % } tune{ 1 to 2 by 0.5 }", unit_type="cap")
    assert [o.kind for o in a.options] == ["opt", "stat", "tune"] and a.doe is None
    assert (a.opt.sweep, a.opt.start.mks, a.opt.stop.mks, a.opt.step) == ("range", 1e-12, 2e-11, None)
    assert (a.stat.enabled, a.stat.sweep, a.stat.start.canonical, a.stat.stop) == (False, "percent deviation", "5%", None)
    assert [a.tune.start.number, a.tune.stop.number, a.tune.step.number] == [1.0, 2.0, 0.5]
    assert repr(a) == "Annotation('10pF opt{ 1pF to 20pF } nostat{ gauss +/- 5% } tune{ 1 to 2 by 0.5 }')"
    assert repr(a.opt) == "Option('opt{ 1pF to 20pF }')"
    empty = qorin.Annotation("1 stat{ distcompname = a b }").stat
    assert (empty.sweep, empty.start, empty.stop, empty.step) == ("empty", None, None, None)
    invalid = qorin.Annotation("1 opt{ 1 to 2 by 0.1 }", unit_type="num")
    assert (invalid.valid, invalid.opt.sweep, invalid.opt.start) == (False, None, None)


def test_canonicalize_batches_and_defaults_to_num():
    texts = ["1  opt{ 1 to 2 }", "10 pF", "x tune{ 1 to 2 by 1 }"] * 1000
    assert qorin.canonicalize(texts) == [qorin.Annotation(t, unit_type="num").canonical for t in texts]
    assert qorin.canonicalize(t for t in ["1 k"]) == ["1 k"]
    assert qorin.canonicalize(("1 k",), unit_type="freq") == ["1kHz"]
    assert qorin.canonicalize([]) == []
    with pytest.raises(TypeError):
        qorin.canonicalize(["1", 2])
    with pytest.raises(KeyError):
        qorin.canonicalize("1", unit_type="nope")


def test_batches_on_several_threads_keep_apart():
    # The batch runs without the GIL: nothing may be shared between calls.
    lists = [[f"{i} pF opt{{ {i} pF to {j} pF }}" for i in range(2000)] for j in range(100, 108)]
    expected = [[f"{i}pF opt{{ {i}pF to {j}pF }}" for i in range(2000)] for j in range(100, 108)]
    with ThreadPoolExecutor(4) as pool:
        assert list(pool.map(lambda texts: qorin.canonicalize(texts, unit_type="cap"), lists)) == expected
