"""The qorin Python module beside its peers, in one run: Pint for scalar
conversion and value parsing, a NumPy multiply for array conversion, and the
C++ library itself for canonicalizing a list of annotations.

Run by ./scripts/bench --python. Prints, for each comparison, the median
ratio over the repetitions and its range; each repetition times both sides
back to back, so the machine's load falls on both alike.
"""
import random
import statistics
import subprocess
import sys
import tempfile
import timeit

import numpy as np
import pint

import qorin

REPETITIONS = 7


def per_call(statement, number):
    return timeit.timeit(statement, number=number) / number


def report(name, ours, theirs, goal):
    """ours/theirs: callables giving seconds per operation for one repetition."""
    ratios, our_times, their_times = [], [], []
    for _ in range(REPETITIONS):
        a, b = ours(), theirs()
        our_times.append(a)
        their_times.append(b)
        ratios.append(b / a)
    print(f"{name}: qorin {statistics.median(our_times) * 1e9:,.0f} ns, peer {statistics.median(their_times) * 1e9:,.0f} ns;"
          f" peer/qorin median {statistics.median(ratios):.2f}x (range {min(ratios):.2f}x-{max(ratios):.2f}x); goal {goal}")
    sys.stdout.flush()


def annotations(count):
    rng = random.Random(21)
    forms = ["{a} pF opt{{ {b} pF to {c} pF }} stat{{ gauss +/- {p} % }}",
             "{a}p tune{{ {b} to {c} by 0.5 }}",
             "c_{i} pF  doe{{ +/- {p} % }}",
             "{a} nF",
             "({i}+x) pF noopt{{ discrete {b} pF to {c} pF by 1 pF }}"]
    return [rng.choice(forms).format(a=rng.randrange(1, 1000), b=rng.randrange(1, 10), c=rng.randrange(10, 100),
                                     p=rng.randrange(1, 20), i=rng.randrange(100)) for _ in range(count)]


def main():
    tool = sys.argv[1]  # the C++ rate program
    registry = pint.UnitRegistry()
    quantity = registry.Quantity
    print(f"qorin {qorin.__version__}, Pint {pint.__version__}, NumPy {np.__version__}, Python {sys.version.split()[0]};"
          f" {REPETITIONS} repetitions")

    report("scalar convert(1, 'kHz', 'Hz') vs Q_(1, 'kHz').to('Hz')",
           lambda: per_call(lambda: qorin.convert(1, "kHz", "Hz"), 200_000),
           lambda: per_call(lambda: quantity(1, "kHz").to("Hz"), 5_000), ">= 100x")
    report("parse Value('10 pF') vs ureg.Quantity('10 pF')",
           lambda: per_call(lambda: qorin.Value("10 pF"), 100_000),
           lambda: per_call(lambda: quantity("10 pF"), 5_000), ">= 50x")

    values = np.random.default_rng(21).normal(0.0, 1e3, 1_000_000)
    assert np.array_equal(qorin.to_mks(values, "pF"), values * 1e-12)
    report("to_mks(10^6 float64, 'pF') vs values * 1e-12 (NumPy)",
           lambda: per_call(lambda: qorin.to_mks(values, "pF"), 20),
           lambda: per_call(lambda: values * 1e-12, 20), "qorin within 1.5x of NumPy, i.e. >= 0.67x")

    texts = annotations(100_000)
    with tempfile.NamedTemporaryFile("w", suffix=".txt", delete=False) as file:
        file.write("\n".join(texts) + "\n")
    assert qorin.canonicalize(texts[:5], unit_type="cap") == [qorin.Annotation(t, "cap").canonical for t in texts[:5]]

    def cpp_rate():
        run = subprocess.run([tool, file.name, "cap", "1"], capture_output=True, text=True, check=True)
        return float(run.stdout.split()[0]) * 1e-9

    # Here the "peer" is the C++ library: the ratio is the module's share of its rate.
    report("canonicalize(100,000 annotations, 'cap') vs the C++ library's own loop",
           lambda: per_call(lambda: qorin.canonicalize(texts, unit_type="cap"), 1) / len(texts),
           cpp_rate, ">= 0.75x of the C++ rate")


if __name__ == "__main__":
    main()
