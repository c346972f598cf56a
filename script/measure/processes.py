"""Whole processes: the command and its peers on the same definitions."""

import os
import shutil
import subprocess
import sys
import time

SIZE = 25000
_PEERS = ("slaptest -u", "SubSchema")

_SUBSCHEMA = """
import sys
import ldap.schema

def lines(name):
    with open(f"{sys.argv[1]}/{name}", encoding="ascii") as file:
        return file.read().splitlines()

ldap.schema.SubSchema({"attributeTypes": lines("attributetypes"),
                       "objectClasses": lines("objectclasses")})
"""


class Processes:
    """Runs them on the corpus of SIZE definitions below a directory."""

    def __init__(self, command, corpora, peers):
        corpus = corpora / str(SIZE)
        # The peers' alone: it makes a process begin more slowly.
        self._environment = {**os.environ, **peers.environment}
        self._out = corpus / "migrated"
        sides = ["--old", corpus / "old", "--new", corpus / "new"]
        # By name, with the exit status that they must have.
        self._commands = {}
        if peers.slaptest:
            self._write_configuration(corpus)
            self._commands["slaptest -u"] = 0, [
                peers.slaptest, "-u", "-f", corpus / "slapd.conf"]
        self._commands["check"] = 0, [command, "check", corpus / "old"]
        self._commands["plan"] = 1, [command, "plan", *sides]
        self._commands["apply"] = 0, [command, "apply", *sides, "--out",
                                      self._out]
        if peers.python_ldap:
            self._commands["SubSchema"] = 0, [sys.executable, "-c", _SUBSCHEMA,
                                              corpus]
        self._commands["--version"] = 0, [command, "--version"]

    @staticmethod
    def _write_configuration(corpus):
        with (corpus / "slapd.conf").open("w", encoding="ascii") as out:
            for kind in ("attributetype", "objectclass"):
                file = "attributetypes" if kind[0] == "a" else "objectclasses"
                for line in (corpus / file).read_text().splitlines():
                    out.write(f"{kind} {line}\n")

    def measure(self):
        """Runs each once. Returns the seconds by name and SIZE."""
        return {(name, SIZE): self._time(name, status, command)
                for name, (status, command) in self._commands.items()}

    def _time(self, name, expected, command):
        shutil.rmtree(self._out, ignore_errors=True)
        environment = self._environment if name in _PEERS else None
        start = time.perf_counter()
        result = subprocess.run(command, env=environment,
                                stdout=subprocess.DEVNULL,
                                stderr=subprocess.PIPE, check=False)
        seconds = time.perf_counter() - start
        if result.returncode != expected:
            sys.exit(f"script/performance: {name}: exit status "
                     f"{result.returncode}, expected {expected}\n"
                     f"{result.stderr.decode(errors='replace')}")
        return seconds
