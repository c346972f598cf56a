"""The benchmarks of the library, each in a process of its own.

What one leaves behind, above all in the allocator, would be in the times of
those that come after it.
"""

import json
import os
import re
import subprocess
import sys

# In the order in which they run: what is compared stands together.
OPERATIONS = ("sbumpcLoop", "lexan", "readWithLibldap", "readFile",
              "fillContainers", "parseWithLibldap", "compSchemas",
              "compSchemasExcluding", "mergeSchemas", "mergeSchemasWhole",
              "checkCollisions", "writeLines", "writeFile", "destroy")
KINDS = tuple(f"{operation}<{kind}>" for operation in ("parse", "dump", "equal")
              for kind in ("Types", "Storage", "Classes"))
LDAP_KINDS = ("parseInMemory<AttributeType>", "parseInMemory<Class>")
MEMORY = ("memoryOfSchema", "memoryOfContainers")
# What is measured of a corpus that is not generated, and of one in one size.
REAL = ("sbumpcLoop", "lexan", "readWithLibldap", "readFile")
ONE_SIZE = 10000

# A process reads and migrates once, into memory that nothing has used before;
# so do these. The others are repeated.
_ONCE = ("readWithLibldap", "readFile", "fillContainers", "compSchemas",
         "compSchemasExcluding", "mergeSchemas", "mergeSchemasWhole",
         "checkCollisions", "destroy")
_REPEATED = {0: 100, 1000: 100, 10000: 20, 100000: 3, 1000000: 1}


class Benchmarks:
    """Runs them on the corpora below a directory."""

    def __init__(self, program, corpora, sizes):
        self._program = program
        self._corpora = corpora
        self._list = []
        for size in sizes:
            self._list += [(name, size) for name in
                           (OPERATIONS if size else REAL)]
            if size == ONE_SIZE:
                self._list += [(name, size)
                               for name in KINDS + LDAP_KINDS + MEMORY]

    def measure(self):
        """Runs each once. Returns seconds for one definition, or byte, or bytes
        for one, by name and size. One that is not there is left out."""
        results = {}
        for name, size in self._list:
            value = self._run(name, size)
            if value is not None:
                results[name, size] = value
        return results

    def _run(self, name, size):
        iterations = 1 if name in _ONCE else _REPEATED[size]
        environment = {**os.environ,
                       "BENCH_CORPORA": str(self._corpora),
                       "BENCH_SIZES": str(size),
                       "BENCH_ITERATIONS": str(iterations)}
        result = subprocess.run(
            [self._program, f"--benchmark_filter=^{re.escape(name)}/{size}(/|$)",
             "--benchmark_format=json"], env=environment,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
            check=False)
        if "Failed to match any benchmarks" in result.stderr + result.stdout:
            return None  # a peer that is not installed
        if result.returncode != 0:
            sys.exit(f"script/performance: {name}/{size} fails\n"
                     f"{result.stderr}")
        found = json.loads(result.stdout)["benchmarks"][0]
        if "error_message" in found:
            sys.exit(f"script/performance: {name}/{size}: "
                     f"{found['error_message']}")
        return found["bytes"] if "bytes" in found else found["each"]
