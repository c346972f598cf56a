"""Builds a copy of the project, and what a changed source makes of it.

A build is made once by CMake and not changed any more. A change is made in the
copy of the library's sources that a worker has for itself, and only what needs
that source is compiled again, into the worker's folder. The library is a shared
one, so that the executables of the tests need no new link; each test file is an
executable of its own, so that those that need a changed header are made when it
is their turn.
"""

import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess

_COPIED = ("CMakeLists.txt", "cmake", "examples", "fuzz", "src", "tests",
           "docs")
_LIBRARY = "src/libraries/libschema"
_TARGETS = ("libschema_schema_shared", "libschema_test", "allocation_test",
            "lexan_allocation_test", "file_fault_test")
_COMPILER = "clang++"
_ALLOCATION = "tests/support/FailingAllocation"


def copy_checkout(root, to):
    """Files that have not changed keep their time, and are not compiled."""
    for name in _COPIED:
        if (root / name).is_dir():
            shutil.rmtree(to / name, ignore_errors=True)
            shutil.copytree(root / name, to / name)
        else:
            shutil.copy2(root / name, to / name)


def library_files(root):
    folder = root / _LIBRARY
    return sorted(
        str(path.relative_to(folder)) for path in folder.rglob("*")
        if path.suffix in (".cpp", ".h"))


def parse_arguments(root):
    """How libclang is to read a source or a header of the library."""
    return ["-xc++", "-std=c++17", f"-I{root / _LIBRARY}",
            f"-I{root / 'src/platform'}"]


class Build:
    """The copy in `checkout`, compiled with `flags` into `folder`."""

    def __init__(self, checkout, folder, flags):
        self._library = checkout / _LIBRARY
        self._folder = folder
        self._flags = flags
        self._sources = {}  # of the library, below its folder -> command
        self._tests = {}  # name -> command
        self._allocation = None  # object of the failing allocation functions
        self._allocating = set()  # objects of tests that need it
        self._needs = {}  # object -> files of the library that it needs
        self._precompiled = []

    def make(self, checkout, jobs):
        subprocess.run(
            ["cmake", "-S", checkout, "-B", self._folder, "-G", "Ninja",
             f"-DCMAKE_CXX_COMPILER={_COMPILER}", "-DCMAKE_BUILD_TYPE=None",
             f"-DCMAKE_CXX_FLAGS=-O0 {' '.join(self._flags)}",
             "-DBUILD_SHARED_LIBS=ON", "-DLIBSCHEMA_INSTALL=OFF",
             "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON"],
            check=True, stdout=subprocess.DEVNULL)
        subprocess.run(
            ["cmake", "--build", self._folder, "--parallel", str(jobs),
             "--target", *_TARGETS],
            check=True, stdout=subprocess.DEVNULL)
        self._read_commands(checkout)
        self._read_needs()
        self._precompile()
        self._link_library({}, self.library_path())
        for test in self._tests:
            self._link_test(test, self._object(self._tests[test]),
                            self._folder / test)

    def tests(self):
        return sorted(self._tests)

    def library_path(self):
        return self._folder / "mutated" / "libschema.so"

    def environment(self, worker):
        folders = [worker, self.library_path().parent,
                   self._folder / "src/platform"]
        return {"LD_LIBRARY_PATH": ":".join(map(str, folders))}

    def compile_library(self, worker, file):
        """Compiles what of the library needs `file`. False: it does not."""
        objects = {}
        for source, command in self._sources.items():
            made = self._object(command)
            if file in self._needs[made]:
                objects[made] = worker / (source.replace("/", "-") + ".o")
                if not self._compile(command, worker, objects[made],
                                     self._precompiled):
                    return False
        for left in ("libschema.so", *self._tests):
            (worker / left).unlink(missing_ok=True)
        if objects:
            self._link_library(objects, worker / "libschema.so")
        return True

    def executable(self, worker, test, file):
        """The test's executable as it is with the changed `file`; None when it
        does not compile."""
        command = self._tests[test]
        if file not in self._needs[self._object(command)]:
            return self._folder / test
        if not (worker / test).exists():
            made = worker / (test + ".o")
            if not self._compile(command, worker, made, []):
                return None
            self._link_test(test, made, worker / test)
        return worker / test

    def _read_commands(self, checkout):
        with open(self._folder / "compile_commands.json",
                  encoding="utf-8") as file:
            entries = json.load(file)
        for entry in entries:
            path = pathlib.Path(entry["file"])
            command = shlex.split(entry["command"])
            if path.is_relative_to(self._library):
                self._sources[str(path.relative_to(self._library))] = command
            elif path.parent == checkout / "tests/libschema":
                self._tests[path.stem] = command
            elif path == checkout / f"{_ALLOCATION}.cpp":
                self._allocation = self._object(command)

    def _read_needs(self):
        listed = subprocess.run(["ninja", "-C", self._folder, "-t", "deps"],
                                check=True, capture_output=True, text=True)
        made = None
        for line in listed.stdout.splitlines():
            header = re.match(r"(\S+): #deps", line)
            path = self._folder / line.strip()
            if header:
                made = self._folder / header[1]
                self._needs[made] = set()
            elif line and path.resolve().is_relative_to(self._library):
                self._needs[made].add(
                    str(path.resolve().relative_to(self._library)))
            elif line.endswith(f"/{_ALLOCATION}.h"):
                self._allocating.add(made)

    def _precompile(self):
        """The standard headers, which the library's sources then need not
        read."""
        includes = set()
        for path in self._library.rglob("*.[ch]*"):
            if path.suffix in (".cpp", ".h"):
                includes.update(
                    re.findall(r"^#include <.*>$", path.read_text(), re.M))
        made = self._folder / "mutated"
        made.mkdir(exist_ok=True)
        (made / "standard.h").write_text("\n".join(sorted(includes)) + "\n")
        command = next(iter(self._sources.values()))
        arguments = command[:command.index("-o")]
        subprocess.run([*arguments, "-w", "-x", "c++-header",
                        made / "standard.h", "-o", made / "standard.h.pch"],
                       check=True, cwd=self._folder)
        self._precompiled = ["-include-pch", str(made / "standard.h.pch")]

    def _object(self, command):
        return self._folder / command[command.index("-o") + 1]

    def _compile(self, command, worker, made, options):
        copied = str(worker / _LIBRARY)
        command = [argument.replace(str(self._library), copied)
                   for argument in command]
        command[command.index("-o") + 1] = str(made)
        done = subprocess.run([*command, "-w", *options], cwd=self._folder,
                              stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, check=False)
        return done.returncode == 0

    def _link_library(self, changed, made):
        objects = [self._object(command) for command in self._sources.values()]
        objects = [changed.get(entry, entry) for entry in objects]
        subprocess.run(
            [_COMPILER, "-shared", "-Wl,-soname,libschema.so", *self._flags,
             *objects, "-L", self._folder / "src/platform", "-lschema-platform",
             "-o", made], check=True)

    def _link_test(self, test, test_object, made):
        objects = [test_object]
        if self._object(self._tests[test]) in self._allocating:
            objects.append(self._allocation)
        subprocess.run(
            [_COMPILER, *self._flags, *objects,
             "-L", self._folder / "tests", "-L", self.library_path().parent,
             "-L", self._folder / "src/platform", "-ltest_support", "-lschema",
             "-lschema-platform", "-lgmock_main", "-lgmock", "-lgtest",
             "-o", made], check=True)


def prepare_worker(checkout, worker):
    shutil.rmtree(worker, ignore_errors=True)
    shutil.copytree(checkout / _LIBRARY, worker / _LIBRARY)
    os.makedirs(worker / "tmp")


def source_path(folder, file):
    return folder / _LIBRARY / file
