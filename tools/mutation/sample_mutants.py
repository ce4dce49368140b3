#!/usr/bin/env python3
"""Mutation sample: how many small faults in the code do the tests catch?

With a fixed seed it picks mutants in game/, best/, system/ and ui/, one
change each (a comparison, a boolean, an arithmetic operator, a whole-number
constant off by one), builds each in a build folder of its own, runs the
headless suite (C++ tests and driver scripts), and lists the mutants that no
test kills. A mutant that does not compile is not counted and another is
drawn in its place, so the same seed on the same code gives the same sample.

    tools/mutation/sample_mutants.py [--seed 1] [--count 40] [--build build/mutants]
"""
import argparse
import random
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FOLDERS = ["game", "best", "system", "ui"]
# Only what this machine builds: the Windows platform is the cross build's.
SKIP = ["system/windows/"]

SWAPS = {"<=": "<", "<": "<=", ">=": ">", ">": ">=", "==": "!=", "!=": "==",
         "+": "-", "-": "+", "true": "false", "false": "true", "&&": "||", "||": "&&"}
KINDS = [
    ("comparison", re.compile(r"(?<= )(<=|>=|==|!=|<|>)(?= )")),
    ("logic", re.compile(r"(?<= )(&&|\|\|)(?= )")),
    ("arithmetic", re.compile(r"(?<= )(\+|-)(?= )")),
    ("boolean", re.compile(r"\b(true|false)\b")),
    ("constant", re.compile(r"(?<![\w.'])(\d+)(?![\w.'])")),
]


def in_string(line, pos):
    return line[:pos].count('"') % 2 == 1


def candidates():
    sites = []
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).rglob("*")):
            rel = path.relative_to(ROOT).as_posix()
            if path.suffix not in (".cpp", ".h") or any(rel.startswith(s) for s in SKIP):
                continue
            lines = path.read_text(encoding="utf-8").split("\n")
            for number, line in enumerate(lines, 1):
                code = line.split("//")[0]
                stripped = code.strip()
                if not stripped or stripped.startswith("#") or stripped.startswith("*"):
                    continue
                for kind, pattern in KINDS:
                    for m in pattern.finditer(code):
                        if in_string(code, m.start()):
                            continue
                        old = m.group(1)
                        new = str(int(old) + 1) if kind == "constant" else SWAPS[old]
                        sites.append((rel, number, m.start(), old, new, kind))
    return sites


def run(cmd, **kw):
    return subprocess.run(cmd, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, **kw)


def configure(build):
    if not (build / "CMakeCache.txt").exists():
        r = run(["cmake", "-S", ".", "-B", str(build), "-DCMAKE_BUILD_TYPE=Debug",
                 "-DZD_BUILD_QT=OFF", "-DZD_WERROR=OFF"])
        if r.returncode:
            sys.exit("configure failed:\n" + r.stdout)


def build_ok(build):
    # Only what the headless suite runs: the driver and the C++ tests.
    return run(["cmake", "--build", str(build), "-j", "2", "--target", "zifferndach-drive",
                "zd_tests"]).returncode == 0


def first_failure(build):
    """The headless suite, stopped at the first failure, which kills the
    mutant; the name of the failing test, or None when all pass."""
    # The soak tests take longest; most mutants fall to a quicker test first.
    for which in (["-E", "^Soak[.]"], ["-R", "^Soak[.]"]):
        r = run(["ctest", "--test-dir", str(build), "-j", "2", "--stop-on-failure",
                 "--timeout", "240", *which])
        if r.returncode != 0:
            break
    else:
        return None
    for line in r.stdout.splitlines():
        m = re.search(r"Test +#\d+: (\S+) ", line)
        if m and " Passed " not in line:
            return m.group(1)
    return "the suite"


def apply(site):
    rel, number, col, old, new, _ = site
    path = ROOT / rel
    text = path.read_text(encoding="utf-8")
    lines = text.split("\n")
    line = lines[number - 1]
    assert line[col:col + len(old)] == old, site
    lines[number - 1] = line[:col] + new + line[col + len(old):]
    path.write_text("\n".join(lines), encoding="utf-8")
    return text


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("--seed", type=int, default=1)
    ap.add_argument("--count", type=int, default=40)
    ap.add_argument("--build", default="build/mutants")
    args = ap.parse_args()
    build = (ROOT / args.build).resolve()
    configure(build)
    if not build_ok(build) or first_failure(build):
        sys.exit("the unmutated code must build and pass first")

    # The kinds take turns, so that the many layout constants of the windows
    # do not crowd out the comparisons and operators.
    rng = random.Random(args.seed)
    by_kind = {kind: [s for s in candidates() if s[5] == kind] for kind, _ in KINDS}
    for sites_of_kind in by_kind.values():
        rng.shuffle(sites_of_kind)
    sites = [s for group in zip(*by_kind.values()) for s in group]
    results = []
    for site in sites:
        if len(results) == args.count:
            break
        rel, number, _, old, new, kind = site
        original = apply(site)
        try:
            if not build_ok(build):
                continue
            by = first_failure(build)
        finally:
            (ROOT / rel).write_text(original, encoding="utf-8")
        label = f"{rel}:{number} {kind} {old} -> {new}"
        results.append((label, by is not None))
        print(f"killed   {label}   (by {by})" if by else f"SURVIVED {label}", flush=True)
    build_ok(build)

    killed = sum(1 for _, k in results if k)
    print(f"\n{killed} of {len(results)} mutants killed (seed {args.seed}); survivors:")
    for label, k in results:
        if not k:
            print("  " + label)
    return 0


if __name__ == "__main__":
    sys.exit(main())
