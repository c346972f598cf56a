"""The tables of what was measured, in Markdown."""

import datetime
import os
import pathlib
import platform
import re
import statistics
import subprocess
import textwrap

from measure import benchmarks, processes

# What of the tables is a growth, and how the operations are spoken of.
_GROWING = ("lexan", "readFile", "compSchemas", "mergeSchemas",
            "mergeSchemasWhole", "checkCollisions", "writeFile", "destroy")
_NAMES = {
    "sbumpcLoop": "`sbumpc` loop, a byte",
    "lexan": "`lexan()`, a byte",
    "readWithLibldap": "B: file to tables on libldap",
    "readFile": "`readFile`",
    "fillContainers": "the containers filled without parsing",
    "parseWithLibldap": "A: libldap's parsing in memory",
    "compSchemas": "`compSchemas`",
    "compSchemasExcluding": "`compSchemas` with as many OIDs excluded",
    "mergeSchemas": "`mergeSchemas` of what `compSchemas` left",
    "mergeSchemasWhole": "`mergeSchemas` of everything",
    "checkCollisions": "`checkCollisions`",
    "writeLines": "the same lines through an `ofstream` with `endl`",
    "writeFile": "`writeFile`",
    "destroy": "the manager's destruction",
}
_BYTEWISE = ("sbumpcLoop", "lexan")
_A = 0.6e-6  # the speed that figures in seconds are meant for


class Measured:
    """The rounds, each with values by name and size."""

    def __init__(self, rounds):
        self.rounds = rounds

    def of(self, formula):
        """The values of a formula over a round; none where something in it was
        not measured."""
        try:
            return [formula(values) for values in self.rounds]
        except KeyError:
            return None


def _show(values, form):
    if values is None:
        return "not measured"
    return (f"{form(statistics.median(values))} "
            f"({form(min(values))}-{form(max(values))})")


def _time(seconds):
    for unit, size in (("s", 1), ("ms", 1e-3), ("µs", 1e-6), ("ns", 1e-9)):
        if seconds >= size:
            break
    return f"{seconds / size:.3g} {unit}"


def _ratio(ratio):
    return f"{ratio:.2f}"


def _size(size):
    if size == 0:
        return "real"
    return f"{size // 1000000}M" if size >= 1000000 else f"{size // 1000}k"


def _quotient(over, under):
    return lambda values: values[over] / values[under]


def _figures(sizes):
    """What is to be reached: the work, its formula, how it is shown, the figure
    as a number and as a text."""
    def ratio(work, over, under, limit, unit):
        return (work, _quotient(over, under), _ratio, limit,
                f"at most {limit} {unit}")

    ten = benchmarks.ONE_SIZE
    yield ratio("`lexan()` over a file", ("lexan", ten), ("sbumpcLoop", ten),
                5.0, "times the `sbumpc` loop")
    for size in (0, *sizes):
        yield ratio(f"`readFile`, {_size(size)}", ("readFile", size),
                    ("readWithLibldap", size), 1.2 if size > ten else 1.0, "B")
    yield ratio("memory after reading", ("memoryOfSchema", ten),
                ("memoryOfContainers", ten), 1.25,
                "times the containers alone")
    for name in ("compSchemas", "mergeSchemas", "mergeSchemasWhole",
                 "checkCollisions"):
        yield ratio(f"{_NAMES[name]}, 10k", (name, ten),
                    ("parseWithLibldap", ten), 2.0, "A")
    yield ratio("`writeFile`, 10k", ("writeFile", ten), ("writeLines", ten),
                1.3, "times the lines with `endl`")
    for name in _GROWING:
        yield (f"growth from 10k to 100k, {_NAMES[name]}", _growth(name),
               _ratio, 1.0, "at most B's")
    yield ratio("the excluded list, 100k against 100k",
                ("compSchemasExcluding", 100000), ("compSchemas", 100000), 1.2,
                "times the run without")
    yield from _process_figures(ratio)


def _process_figures(ratio):
    size = processes.SIZE
    for command in ("check", "plan"):
        yield ratio(f"`{command}`, 25,000, whole process", (command, size),
                    ("slaptest -u", size), 0.5, "`slaptest -u`")
        yield (f"`{command}`, 25,000, where A is 0.6 µs",
               _at_speed(command, size), _time, 0.3, "under 0.3 s")
    yield ("`schema-migrate --version`",
           lambda values: values["--version", size], _time, 0.005,
           "under 5 ms")


def _growth(name):
    def growth(values):
        def of(which):
            return values[which, 100000] / values[which, 10000]
        return of(name) / of("readWithLibldap")
    return growth


def _at_speed(command, size):
    return lambda values: (values[command, size] * _A /
                           values["parseWithLibldap", benchmarks.ONE_SIZE])


def _verdict(values, limit):
    if values is None:
        return "-"
    return "yes" if statistics.median(values) <= limit else "**no**"


def _print_figures(measured, sizes):
    print("| work | measured | figure to reach | reached? |")
    print("|---|---|---|---|")
    for work, formula, form, limit, figure in _figures(sizes):
        values = measured.of(formula)
        print(f"| {work} | {_show(values, form)} | {figure} | "
              f"{_verdict(values, limit)} |")


def _print_operations(measured, sizes):
    shown = [*sizes, 0]
    print("\nTime for one definition, or byte:\n")
    print("| work | " + " | ".join(_size(size) for size in shown) + " |")
    print("|---|" + "---|" * len(shown))
    for name in benchmarks.OPERATIONS:
        cells = [_show(measured.of(lambda values, key=(name, size):
                                   values[key]), _time)
                 if size or name in benchmarks.REAL else "-"
                 for size in shown]
        print(f"| {_NAMES[name]} | " + " | ".join(cells) + " |")


def _print_values(measured, title, head, names, size, form):
    print(f"\n{title}:\n\n| {head} | median (least-most) |\n|---|---|")
    for name in names:
        values = measured.of(lambda values, key=(name, size): values[key])
        print(f"| `{name}` | {_show(values, form)} |")


def _output(*command):
    result = subprocess.run(command, stdout=subprocess.PIPE,
                            stderr=subprocess.DEVNULL, text=True, check=False)
    return result.stdout.strip()


def _print_machine(measured, root):
    model = re.search(r"^model name\s*: (.*)$",
                      pathlib.Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE")
    release = platform.freedesktop_os_release().get("PRETTY_NAME", "")
    compiler = _output("g++", "--version").splitlines()[0]
    commit = _output("git", "-C", str(root), "describe", "--always", "--dirty")
    for line in (
            f"{datetime.date.today()}, rounds: {len(measured.rounds)}; median "
            f"(least-most); load at the end: {os.getloadavg()[2]:.1f}",
            f"{model.group(1) if model else platform.machine()}, "
            f"{os.cpu_count()} processors, {memory / (1 << 30):.0f} GB; "
            f"{release}, Linux {platform.release()}",
            f"{compiler}, preset `release`; commit {commit or 'unknown'}"):
        print(textwrap.fill(f"- {line}", 80, subsequent_indent="  ",
                            break_on_hyphens=False))
    print()


def write(measured, sizes, root):
    _print_machine(measured, root)
    _print_figures(measured, sizes)
    _print_operations(measured, sizes)
    ten = benchmarks.ONE_SIZE
    _print_values(measured, "Time for one definition, 10k, by kind",
                  "work<kind>", benchmarks.KINDS + benchmarks.LDAP_KINDS, ten,
                  _time)
    _print_values(measured, "Memory for one definition, 10k, in bytes", "of",
                  benchmarks.MEMORY, ten, lambda value: f"{value:.0f}")
    _print_values(measured, "Whole processes, 25,000 definitions", "process",
                  ("slaptest -u", "SubSchema", "check", "plan", "apply",
                   "--version"), processes.SIZE, _time)
