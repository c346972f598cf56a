"""Runs the executables of the tests, with limits."""

import json
import math
import os
import re
import resource
import shutil
import signal
import subprocess
import time

_SLOW = 0.15  # seconds that a slow test takes
_MEMORY = 1 << 30
_FILE_SIZE = 64 << 20


class Suite:
    """A build's tests, as they ran on the unchanged library."""

    def __init__(self, build, memory, environment):
        self._build = build
        self._memory = memory  # limits it, which a sanitizer does not bear
        self._environment = environment
        self._limits = {}  # (test, quick) -> processor seconds, seconds
        self.slow = {}  # test -> names of the slow ones in it
        self._seconds = {}

    def measure(self, worker, slow=None):
        """Runs everything once. `slow` says which tests are slow if another
        suite has found that already."""
        for test in self._build.tests():
            path = self._build.executable(worker, test, "")
            report = worker / "report.json"
            result = self._run(path, worker, [f"--gtest_output=json:{report}"],
                               (600, 600))
            if result is not None:
                raise SystemExit(
                    f"the unchanged library does not pass: {result}")
            with open(report, encoding="utf-8") as file:
                suites = json.load(file)["testsuites"]
            names = {f"{suite['name']}.{entry['name']}":
                         float(entry["time"].rstrip("s"))
                     for suite in suites for entry in suite["testsuite"]}
            if slow is None:
                self.slow[test] = [name for name, seconds in names.items()
                                   if seconds > _SLOW]
            else:
                self.slow[test] = slow[test]
            self._seconds[test] = sum(
                seconds for name, seconds in names.items()
                if name not in self.slow[test])
            self._limit(test, True, self._seconds[test])
            self._limit(test, False, sum(names.values()))

    def order(self, file):
        """Those first that are named after the file, then the fastest."""
        stem = re.sub(r"^.*/|\..*$", "", file)
        return sorted(
            self._build.tests(),
            key=lambda test: (not test.startswith(stem), self._seconds[test]))

    def run(self, worker, file, quick):
        """Runs the quick tests, or the slow ones, up to the first that notices
        the change. Returns its name, "timed out: " before it; None if no test
        does."""
        for test in self.order(file):
            if not quick and not self.slow[test]:
                continue
            path = self._build.executable(worker, test, file)
            if path is None:
                return f"{test}: does not compile"
            names = ":".join(self.slow[test])
            chosen = ("-" if quick and names else "") + (names or "*")
            result = self._run(path, worker, [f"--gtest_filter={chosen}"],
                               self._limits[test, quick])
            if result is not None:
                return result
        return None

    def _limit(self, test, quick, seconds):
        # What waits for ever uses no processor time: the second one ends it.
        self._limits[test, quick] = (math.ceil(5 * seconds) + 1,
                                     math.ceil(10 * seconds) + 30)

    def _run(self, path, worker, arguments, limits):
        def limit():
            soft, _ = limits
            resource.setrlimit(resource.RLIMIT_CPU, (soft, soft + 1))
            resource.setrlimit(resource.RLIMIT_FSIZE, (_FILE_SIZE, _FILE_SIZE))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            if self._memory:
                resource.setrlimit(resource.RLIMIT_AS, (_MEMORY, _MEMORY))

        environment = {**os.environ, **self._environment,
                       **self._build.environment(worker),
                       "TMPDIR": str(worker / "tmp")}
        written = worker / "output"
        with open(written, "wb") as output:
            process = subprocess.Popen(
                [path, "--gtest_fail_fast", *arguments], cwd=worker / "tmp",
                stdin=subprocess.DEVNULL, stdout=output,
                stderr=subprocess.STDOUT, env=environment, preexec_fn=limit,
                start_new_session=True)
            in_time = _ends(process, limits[1])
            os.killpg(process.pid, signal.SIGKILL)  # and its children
            status = process.wait()
        timed_out = not in_time or status == -signal.SIGXCPU
        if status == 0:
            return None
        shutil.rmtree(worker / "tmp", ignore_errors=True)
        os.makedirs(worker / "tmp")
        prefix = "timed out: " if timed_out else ""
        return prefix + _noticer(written, path.name)


def _ends(process, seconds):
    """Whether the process ends in time. It is not waited for, so that its
    number still is that of its group."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if os.waitid(os.P_PID, process.pid,
                     os.WEXITED | os.WNOHANG | os.WNOWAIT) is not None:
            return True
        time.sleep(0.002)
    return False


def _noticer(written, executable):
    """The test that failed, or that was running at the end."""
    text = written.read_bytes()[-1000000:].decode(errors="replace")
    names = re.findall(r"^\[ RUN      \] (\S+)$", text, re.M)
    failed = re.findall(r"^\[  FAILED  \] (\S+?),? ", text, re.M)
    if not failed and "detected memory leaks" in text:
        return f"the leak check of {executable}"
    return (failed or names[-1:] or [f"the start of {executable}"])[0]
